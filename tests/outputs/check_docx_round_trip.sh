#!/usr/bin/env bash
# Has the command write Word documents from Markdown, and pandoc read them: no word is lost or moved, and headings, lists,
# tables, code, quotes, links, pictures and emphasis are what they were.
#
#   check_docx_round_trip.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

for name in README docs/architecture docs/classic docs/documents docs/python; do
  made="$work/$(basename "$name").docx"
  "$@" -q "$root/$name.md" -o "$made" || fail "the command failed on $name.md"
  /usr/bin/python3 "$root/tests/outputs/compare_round_trip.py" "$root/$name.md" "$made" ||
    fail "pandoc does not find the content of $name.md"
done
