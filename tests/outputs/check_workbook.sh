#!/usr/bin/env bash
# Has a program write a spreadsheet, and openpyxl and LibreOffice read it.
#
#   check_workbook.sh PROGRAM...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

program=("$@")
python=/usr/bin/python3 # the one with Debian's packages

write_workbook() {
  (cd "$work" && "${program[@]}" >odd.out 2>odd.err) || fail "the program failed: $(cat "$work/odd.err")"
  expect_equal "messages" "" "$(cat "$work/odd.out" "$work/odd.err")"
}

check_with_openpyxl() {
  cat >"$work/expected" <<'CELLS'
[Sheet1] frozen at A2
A1 s 'Heading <1> & "more"' Liberation Sans 11 bold color=FFFFFF fill=000080
A2 s 'Name' Liberation Sans 11 bold color=FFFFFF fill=000080
B2 s 'Number' Liberation Sans 11 bold color=FFFFFF fill=000080
C2 s 'Remark' Liberation Sans 11 bold color=FFFFFF fill=000080
A3 s 'Müller & Söhne' Liberation Sans 9
B3 s '0042' Liberation Sans 9
C3 s '€ Ωμέγα 中文' Liberation Sans 9
A4 s '<b>' Liberation Sans 9
C4 s '=1+1' Liberation Sans 9
A5 s ' blanks ' Liberation Sans 9
B5 s 'two\nlines' Liberation Sans 9
C5 s 'a,b;c\td' Liberation Sans 9
A6 s '1.5' Liberation Sans 9
B6 s '2024-11-05' Liberation Sans 9
C6 s 'TRUE' Liberation Sans 9
A7 s 'alarm' Liberation Sans 9 fill=FF0000
B7 s 'quiet' Liberation Sans 9
A8 s 'both' Liberation Sans 9 color=102030 fill=FFEEDD
B8 s 'neither' Liberation Sans 9
A9 s 'The end, in a line that is longer than the widest column may become in this sheet.' Liberation Sans 9
CELLS
  "$python" "$root/tests/outputs/read_workbook.py" "$work/odd.xlsx" >"$work/found" || fail "openpyxl does not open it"
  diff -u "$work/expected" "$work/found" >&2 || fail "openpyxl does not find the written cells"
}

# The filter's options: comma, quotation mark, UTF-8 and so on, up to "as shown", which turns no text into a formula.
check_with_libreoffice() {
  (cd "$work" && timeout 180 soffice "-env:UserInstallation=file://$work/settings" --headless \
    --convert-to 'csv:Text - txt - csv (StarCalc):44,34,76,1,,0,true' odd.xlsx >office.log 2>&1) ||
    fail "LibreOffice did not convert it: $(cat "$work/office.log")"
  cat >"$work/expected.csv" <<'CSV'
"Heading <1> & ""more""",,
"Name","Number","Remark"
"Müller & Söhne","0042","€ Ωμέγα 中文"
"<b>",,"=1+1"
" blanks ","two
lines","a,b;c	d"
"1.5","2024-11-05","TRUE"
"alarm","quiet",
"both","neither",
"The end, in a line that is longer than the widest column may become in this sheet.",,
CSV
  diff -u "$work/expected.csv" "$work/odd.csv" >&2 || fail "LibreOffice does not find the written cells"
}

write_workbook
test_office_documents "$work/odd.xlsx"
check_with_openpyxl
check_with_libreoffice
