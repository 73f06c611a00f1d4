#!/usr/bin/env bash
# Has the command write a document and a table in every format, and checks that they are complete. For
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

check_word_document() {
  local part
  unzip -qt "$work/$1" >"$work/unzip.out" || fail "$1 is not an archive: $(cat "$work/unzip.out")"
  for part in '\[Content_Types\].xml' word/document.xml word/styles.xml word/numbering.xml; do
    unzip -p "$work/$1" "$part" | xmllint --noout - || fail "$part of $1 is not well-formed XML"
  done
}

# Braces must balance, except those after a backslash.
check_rtf() {
  perl -0777 -ne 's/\\[\\{}]//g; exit !(/^\{\\rtf1\b/ && tr/{// == tr/}//)' "$work/$1" || fail "$1 is not complete RTF"
}

check_pdf() {
  qpdf --check "$work/$1.pdf" >"$work/qpdf.out" 2>&1 || fail "qpdf on $1.pdf: $(cat "$work/qpdf.out")"
}

check_files() {
  iconv -f UTF-8 -t UTF-16 "$work/$1.txt" >/dev/null || fail "$1.txt is not UTF-8 text"
  grep -qF "$2" "$work/$1.txt" || fail "$1.txt does not contain its text"
  grep -qF "$2" "$work/$1.md" || fail "$1.md does not contain its text"
  xmllint --noout "$work/$1.xml" || fail "$1.xml is not well-formed XML"
  [ "$(tail -c 9 "$work/$1.html" | tr -d '\r\n')" = "</html>" ] || fail "$1.html does not end"
  check_rtf "$1.rtf"
  check_pdf "$1"
  check_spreadsheet "$1.xlsx"
  check_word_document "$1.docx"
}

# check INPUT NAME TEXT
check() {
  local input=$1 name=$2 text=$3 format outputs=()
  for format in txt html xml md rtf pdf xlsx docx; do
    outputs+=(-o "$name.$format")
  done
  (cd "$work" && "${command[@]}" "$input" "${outputs[@]}" 2>"$name.err") ||
    fail "the command failed on $input: $(cat "$work/$name.err")"
  check_files "$name" "$text"
}

cp "$root/docs/classic.md" "$work/"
make_table 500 >"$work/table.csv"
check classic.md whole "$(sed -n 's/^# //p' "$root/docs/classic.md" | head -n 1)"
check table.csv rows 'Smith, 500 & Sons'
