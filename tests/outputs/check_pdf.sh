#!/usr/bin/env bash
# Has the command, or a program that uses every face or writes a classic report, write PDF, and other programs read it.
#
#   check_pdf.sh documents|tables COMMAND...
#   check_pdf.sh faces PROGRAM...
#   check_pdf.sh classic PROGRAM...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

kind=$1
shift
command=("$@")

read_pdf() {
  (cd "$work" && NODE_PATH="$root/node_modules" node "$root/tests/outputs/read_pdf.mjs" "$1" "$2.pdf" "$3.utf8") ||
    fail "readers do not find the written text in $2.pdf"
}

check_syntax() {
  qpdf --check "$work/$1.pdf" >"$work/$1.qpdf" 2>&1 || fail "qpdf on $1.pdf: $(cat "$work/$1.qpdf")"
  ! grep -q WARNING "$work/$1.qpdf" || fail "qpdf warns of $1.pdf: $(cat "$work/$1.qpdf")"
}

# Reads the file again after other tools have rewritten it.
check_rewritten() {
  local name=$1
  mutool clean "$work/$name.pdf" "$work/$name-clean.pdf" >"$work/clean.err" 2>&1 || fail "mutool: $(cat "$work/clean.err")"
  read_pdf conforming "$name-clean" "$name"
  pdfunite "$work/$name.pdf" "$work/$name.pdf" "$work/$name-twice.pdf"
  cat "$work/$name.utf8" "$work/$name.utf8" >"$work/$name-twice.utf8"
  read_pdf conforming "$name-twice" "$name-twice"
}

check_input() {
  local input=$1 name=${1%.*}
  write_with_text pdf "$input" "$name"
  write_with_text pdf "$input" "$name-wide" --landscape
  for form in "$name" "$name-wide"; do
    check_syntax "$form"
    read_pdf conforming "$form" "$form"
  done
  check_rewritten "$name"
}

write_faces() {
  (cd "$work" && "${command[@]}" "$1.pdf" "$1.utf8" "${@:2}") || fail "the program failed on $1.pdf"
  check_syntax "$1"
}

# Readers know the 14 standard fonts by their names, and the codes of the symbolic two.
check_fonts() {
  local names="Courier Courier-Bold Courier-BoldOblique Courier-Oblique Helvetica Helvetica-Bold
    Helvetica-BoldOblique Helvetica-Oblique Symbol Times-Bold Times-BoldItalic Times-Italic Times-Roman ZapfDingbats"
  pdffonts "$work/$1.pdf" >"$work/$1.fonts" 2>"$work/$1.err"
  expect_equal "poppler's messages on $1.pdf" "" "$(cat "$work/$1.err")"
  # shellcheck disable=SC2086  # a word for each
  expect_equal "fonts of $1.pdf" "$(printf '%s\n' $names)" "$(awk 'NR > 2 { print $1 }' "$work/$1.fonts" | sort -u)"
  expect_equal "encodings of $1.pdf" "Symbol Symbol,ZapfDingbats ZapfDingbats" "$(awk 'NR > 2 && $4 != "WinAnsi" {
    print $1, $4 }' "$work/$1.fonts" | sort -u | paste -sd,)"
}

# Only poppler and PDFium map dingbats to characters; the others must draw them without messages.
check_dingbats() {
  pdftotext -raw "$work/$1.pdf" "$work/$1.txt" 2>"$work/$1.err"
  expect_equal "poppler's messages on $1.pdf" "" "$(cat "$work/$1.err")"
  expect_equal "text of $1.pdf" "$(tr -d ' \n' <"$work/$1.utf8")" "$(tr -d ' \n\f' <"$work/$1.txt")"
  mutool draw -q -o "$work/$1-%d.png" "$work/$1.pdf" 2>"$work/$1.err"
  expect_equal "MuPDF's messages on $1.pdf" "" "$(grep -v 'ICC support' "$work/$1.err" || true)"
  gs -q -dNOPAUSE -dBATCH -dSAFER -sDEVICE=nullpage "$work/$1.pdf" >"$work/$1.err" 2>&1
  expect_equal "Ghostscript's messages on $1.pdf" "" "$(cat "$work/$1.err")"
}

case "$kind" in
  documents)
    cp "$root/docs/classic.md" "$work/"
    check_input classic.md
    ;;
  tables)
    make_table 800 >"$work/table.csv"
    check_input table.csv
    ;;
  faces)
    write_faces all
    check_fonts all
    check_dingbats all
    write_faces letters 13
    read_pdf conforming letters letters
    check_rewritten letters
    ;;
  classic)
    (cd "$work" && "${command[@]}" classic.pdf classic.utf8 2>classic.err) || fail "no classic PDF was written"
    grep -q 'OPTION_CONFORMING, set before Open, prevents that' "$work/classic.err" ||
      fail "the log does not say that poppler misreads a classic file: $(cat "$work/classic.err")"
    read_pdf classic classic classic
    ;;
  *) fail "unknown kind '$kind'" ;;
esac
