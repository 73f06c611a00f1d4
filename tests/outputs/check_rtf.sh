#!/usr/bin/env bash
# Has the command write RTF, and LibreOffice and unrtf read it.
#
#   check_rtf.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command=("$@")

# office FORMAT FILE...: converts files into the folder office. Its own settings let tests run in parallel.
office() {
  local format=$1
  shift
  (cd "$work" && timeout 180 soffice "-env:UserInstallation=file://$work/settings" --headless --convert-to "$format" \
    --outdir office "$@" >office.log 2>&1) || fail "LibreOffice did not convert $*: $(cat "$work/office.log")"
}

# The words alone: a text and a document differ in white space, list markers and rules, and a document does not show the
# address of a link to another file.
said() {
  perl -CSD -0pe 's/^([~.])\1*\r?$//mg; s/\s+//g; s/\((?:https?:[^)]*|[\w.\/-]+\.(?:md|cpp|cs|py|c|h|xsd)(?:#[^)]*)?)\)//g; s/[-=>_\x{2022}\x{25E6}\x{25AA}\x{FEFF}]//g'
}

check_text() {
  said <"$work/$1.utf8" >"$work/$1.expected"
  said <"$work/office/$1.txt" >"$work/$1.found"
  cmp "$work/$1.expected" "$work/$1.found" >&2 || fail "LibreOffice does not find the written text in $1.rtf"
}

check_texts() {
  cp "$root/docs/classic.md" "$work/guide.md"
  make_table 300 >"$work/table.csv"
  write_with_text rtf guide.md guide
  write_with_text rtf guide.md guide-wide --landscape
  write_with_text rtf table.csv table
  write_with_text rtf table.csv table-wide --landscape
  office "txt:Text (encoded):UTF8" guide.rtf guide-wide.rtf table.rtf table-wide.rtf
  for name in guide guide-wide table table-wide; do
    check_text "$name"
  done
}

check_paper() {
  expect_equal "the paper of guide.rtf" 1 "$(grep -ac '\\paperw11906\\paperh16838' "$work/guide.rtf")"
  expect_equal "the paper of guide-wide.rtf" 1 "$(grep -ac '\\paperw16838\\paperh11906.*\\landscape' "$work/guide-wide.rtf")"
}

check_with_unrtf() {
  local heading
  unrtf --text "$work/guide.rtf" >"$work/guide.unrtf" 2>"$work/unrtf.err" || fail "unrtf: $(cat "$work/unrtf.err")"
  sed -n 's/^##* //p' "$work/guide.md" >"$work/headings"
  while read -r heading; do
    grep -qF "$heading" "$work/guide.unrtf" || fail "unrtf does not find the heading '$heading'"
  done < <(grep -v '`' "$work/headings")
}

write_odd() {
  cat >"$work/odd.md" <<'MARKDOWN'
# Braces \{a\} and \\ € Ωμέγα 中文 😀

Text \{b\} \\c\\ € Ωμέγα 中文 😀 end.

| Head \{c\} | € Ω 中 😀 |
|---|---|
| cell \\d \{e\} | € Ω 中 😀 |

[Link \{f\} \\ € Ω 中 😀](#braces-a-and---ωμέγα-中文-) and [outside \{g\}](https://example.org/a?b={c}).
MARKDOWN
}

odd() {
  xmllint --xpath "$1" "$work/office/odd.fodt"
}

# Characters that could break a document come back unchanged. Names of bookmarks are short, and end with a number made
# from the whole id.
check_odd_characters() {
  local bookmark='braces_a_and_ωμέγα_中__14917A95F86D6973'
  write_odd
  write_with_text rtf odd.md odd
  office fodt odd.rtf
  expect_equal "the title" 'Braces {a} and \ € Ωμέγα 中文 😀' "$(odd 'string(//*[local-name()="title"])')"
  expect_equal "the heading" 'Braces {a} and \ € Ωμέγα 中文 😀' "$(odd 'string((//*[local-name()="h"])[1])')"
  expect_equal "the bookmark" "$bookmark" "$(odd 'string((//*[local-name()="body"]//@*[name()="text:name" and
    starts-with(., "braces")])[1])')"
  expect_equal "the link" "#$bookmark" "$(odd 'string((//*[local-name()="a"]/@*[local-name()="href"])[1])')"
  expect_equal "the link's text" 'Link {f} \ € Ω 中 😀' "$(odd 'string((//*[local-name()="a"])[1])')"
  expect_equal "the address" 'https://example.org/a?b={c}' "$(odd 'string((//*[local-name()="a"]/@*[local-name()="href"])[2])')"
  expect_equal "the cells" 'Head {c}|€ Ω 中 😀|cell \d {e}|€ Ω 中 😀' "$(for cell in 1 2 3 4; do
    odd "normalize-space((//*[local-name()='table-cell'])[$cell])"
  done | paste -sd '|')"
}

check_texts
check_paper
check_with_unrtf
check_odd_characters
