#!/usr/bin/env bash
# Has the command write a document and a table in every format, in both forms, and checks that they are complete. For
# builds that write the same bytes as another one, whose output third-party programs have read.
#
#   check_well_formed.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command=("$@")

check_spreadsheet() {
  local part
  unzip -qt "$work/$1" >"$work/unzip.out" || fail "$1 is not an archive: $(cat "$work/unzip.out")"
  for part in '\[Content_Types\].xml' xl/workbook.xml xl/worksheets/sheet1.xml; do
    unzip -p "$work/$1" "$part" | xmllint --noout - || fail "$part of $1 is not well-formed XML"
  done
}

# Braces must balance, except those after a backslash.
check_rtf() {
  perl -0777 -ne 's/\\[\\{}]//g; exit !(/^\{\\rtf\b/ && tr/{// == tr/}//)' "$work/$1" || fail "$1 is not complete RTF"
}

# Strict programs warn about a classic file.
check_pdf() {
  local status=0
  qpdf --check "$work/$1.pdf" >"$work/qpdf.out" 2>&1 || status=$?
  if [ "$status" -ne 0 ] && { [ "$form" = conforming ] || [ "$status" -ne 3 ]; }; then
    fail "qpdf on $1.pdf: $(cat "$work/qpdf.out")"
  fi
}

check_files() {
  iconv -f UTF-16 -t UTF-8 "$work/$1.txt" >"$work/$1.utf8" || fail "$1.txt is not UTF-16 text"
  grep -qF "$2" "$work/$1.utf8" || fail "$1.txt does not contain its text"
  xmllint --noout "$work/$1.xml" || fail "$1.xml is not well-formed XML"
  [ "$(tail -c 9 "$work/$1.html" | tr -d '\r\n')" = "</html>" ] || fail "$1.html does not end"
  check_rtf "$1.rtf"
  check_pdf "$1"
  check_spreadsheet "$1.xlsx"
}

# check INPUT NAME TEXT [OPTION...]
check() {
  local input=$1 name=$2 text=$3 format outputs=()
  shift 3
  for format in txt html xml rtf pdf xlsx; do
    outputs+=(-o "$name.$format")
  done
  (cd "$work" && "${command[@]}" "$input" "$@" "${outputs[@]}" 2>"$name.err") ||
    fail "the command failed on $input: $(cat "$work/$name.err")"
  check_files "$name" "$text"
}

cp "$root/docs/guide.md" "$work/"
make_table 500 >"$work/table.csv"
for form in conforming classic; do
  options=()
  [ "$form" = conforming ] || options=(--classic)
  check guide.md "guide-$form" "$(sed -n 's/^# //p' "$root/docs/guide.md" | head -n 1)" "${options[@]}"
  check table.csv "table-$form" 'Smith, 500 & Sons' "${options[@]}"
done
