#!/usr/bin/env bash
# Lets the command write PDF, and five other programs read it.
#
#   check_pdf.sh documents|tables COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

kind=$1
shift
command=("$@")

read_pdf() {
  (cd "$work" && NODE_PATH="$root/node_modules" node "$root/tests/outputs/read_pdf.mjs" "$1" "$2.pdf" "$3.utf8") ||
    fail "readers do not find in $2.pdf what was written"
}

check_syntax() {
  qpdf --check "$work/$1.pdf" >"$work/$1.qpdf" 2>&1 || fail "qpdf on $1.pdf: $(cat "$work/$1.qpdf")"
  ! grep -q WARNING "$work/$1.qpdf" || fail "qpdf warns of $1.pdf: $(cat "$work/$1.qpdf")"
}

# What tools make of a file that they take apart and put together again.
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

# Classic text has the characters up to U+00FF: no bullets, no euro sign.
check_classic() {
  write_with_text pdf "$1" classic --classic
  read_pdf classic classic classic
}

case "$kind" in
  documents)
    cp "$root/docs/guide.md" "$work/"
    check_input guide.md
    grep -v '^ *[-*] ' "$work/guide.md" >"$work/plain.md"
    check_classic plain.md
    ;;
  tables)
    make_table 800 >"$work/table.csv"
    check_input table.csv
    sed 's/ €/ EUR/' "$work/table.csv" >"$work/plain.csv"
    check_classic plain.csv
    ;;
  *) fail "unknown kind '$kind'" ;;
esac
