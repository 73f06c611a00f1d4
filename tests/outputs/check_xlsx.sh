#!/usr/bin/env bash
# Has the command write spreadsheets, and openpyxl and LibreOffice read them.
#
#   check_xlsx.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command=("$@")

# Debian's own Python has Debian's modules, whichever Python comes first on the path.
read_xlsx() {
  /usr/bin/python3 "$root/tests/outputs/read_xlsx.py" "$@" || fail "openpyxl does not read ${*: -1}"
}

# LibreOffice gets settings of its own: otherwise it would open the file in a running instance, perhaps another user's.
office_csv() {
  (cd "$work" && soffice "-env:UserInstallation=file://$work/office" --headless \
    --convert-to 'csv:Text - txt - csv (StarCalc):9,34,76,1,,0,false,true,false' "$1.xlsx" >office.out 2>&1) ||
    fail "LibreOffice does not open $1.xlsx: $(cat "$work/office.out")"
}

check_document() {
  printf '%s\n' '# A & B' '' 'One *two* **three** [four](https://x.org).' '' '- a' '  1. b' '- [x] c' '' \
    '| h | i |' '|---|---|' '| **1** | =2+3 |' '' '```' 'x = "<y>"' '  z' '```' '' '## Last €😀' >"$work/small.md"
  write_with_text xlsx small.md small
  printf '%s\n' 'A & B[bold]' 'One two three four.[]' '• a[]' '1. b[]' '• [x] c[]' '' \
    $'h[bold F2F2F2]\ti[bold F2F2F2]' $'1[bold]\t=2+3[]' '' 'x = "<y>"[]' '  z[]' '' 'Last €😀[bold]' 'frozen A8' \
    >"$work/small.expected"
  read_xlsx --looks "$work/small.xlsx" >"$work/small.cells"
  diff "$work/small.expected" "$work/small.cells" || fail "small.xlsx does not hold the content of small.md"
}

# The text output has the same rows and cells, written by other code.
check_table() {
  make_table 3000 >"$work/table.csv"
  write_with_text xlsx table.csv table
  tr -d '\r' <"$work/table.utf8" | sed 's/\\/\\\\/g; s/\t*$//' >"$work/table.expected"
  read_xlsx "$work/table.xlsx" >"$work/table.cells"
  cmp "$work/table.expected" "$work/table.cells" || fail "table.xlsx does not hold the content of table.csv"
  read_xlsx --looks "$work/table.xlsx" >"$work/table.looks"
  expect_equal "the header's formatting" "$(printf '%s[bold F2F2F2]\t' Number Customer Remark Price Paid)City[bold F2F2F2]" \
    "$(head -1 "$work/table.looks")"
  expect_equal "the frozen rows" "frozen A2" "$(tail -1 "$work/table.looks")"
  office_csv table
  expect_equal "rows that LibreOffice sees" 3001 "$(wc -l <"$work/table.csv")"
  tr -d '\r' <"$work/table.utf8" >"$work/table.rows"
  sed 's/"\([^"]*\(""[^"]*\)*\)"/\1/g; s/""/"/g' "$work/table.csv" >"$work/table.office"
  cmp "$work/table.rows" "$work/table.office" || fail "LibreOffice does not show the content of table.csv"
}

# What the demo writes. openpyxl finds each word of the guide's headings.
check_demo() {
  (cd "$work" && "${command[@]}" "$root/docs/classic.md" --toc -q -o guide.xlsx -o guide.docx) ||
    fail "the command failed on the guide"
  (cd "$work" && "${command[@]}" table.csv --title "A table" -q -o demo.xlsx -o demo.docx) ||
    fail "the command failed on the table"
  read_xlsx "$work/guide.xlsx" >"$work/guide.cells"
  grep -E '^#{1,6} ' "$root/docs/classic.md" | sed 's/^#* //; s/`//g' | while IFS= read -r heading; do
    grep -qF -- "$heading" "$work/guide.cells" || fail "guide.xlsx has no heading '$heading'"
  done
}

check_document
check_table
check_demo
test_office_documents "$work"/*.xlsx "$work"/*.docx
