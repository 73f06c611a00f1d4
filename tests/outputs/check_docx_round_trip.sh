#!/usr/bin/env bash
# Has the command write Word documents from Markdown, and pandoc read them: no word is lost or moved; headings, lists,
# tables, code, quotes, links, pictures and emphasis are what they were; the Markdown that pandoc writes is that of the
# source but for what it does not read. Nested lists and quotes come back as they are, titles of links aside.
#
#   check_docx_round_trip.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

for name in README docs/architecture docs/classic docs/documents docs/python tests/outputs/every_kind; do
  made="$work/$(basename "$name").docx"
  "$@" -q "$root/$name.md" -o "$made" || fail "the command failed on $name.md"
  test_office_documents "$made"
  /usr/bin/python3 "$root/tests/outputs/compare_round_trip.py" "$root/$name.md" "$made" ||
    fail "pandoc does not find the content of $name.md"
done

"$@" -q "$root/tests/outputs/nested_blocks.md" -o "$work/nested.docx" || fail "the command failed on nested blocks"
pandoc -f gfm -t gfm --wrap=none "$root/tests/outputs/nested_blocks.md" | sed 's/ "with a title"//' >"$work/given.md"
pandoc -f docx -t gfm --wrap=none "$work/nested.docx" | diff -u "$work/given.md" - || fail "nested blocks are others"
