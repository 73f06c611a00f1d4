#!/usr/bin/env bash
# Converts a million rows in one pass to every format that keeps no rows in memory. The command's memory must not grow
# with the table.
#
#   million_rows.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command=("$@")
growth_allowed=2048 # KiB

# peak_memory NAME: the peak memory of a run over NAME.csv, in KiB.
peak_memory() {
  (cd "$work" && command time -f %M -o "$1.peak" "${command[@]}" --quiet --separator , "$1.csv" \
    -o "$1.txt" -o "$1.html" -o "$1.xml" -o "$1.rtf" -o "$1.xlsx" -o "$1.docx") || fail "the command failed on $1.csv"
  cat "$work/$1.peak"
}

make_table 1000 >"$work/small.csv"
make_table 1000000 >"$work/large.csv"
small="$(peak_memory small)"
large="$(peak_memory large)"
printf 'Peak memory: %d KiB for 1,000 rows, %d KiB for 1,000,000 rows\n' "$small" "$large"
[ "$small" -gt 0 ] || fail "no memory was measured"
[ "$large" -le "$((small + growth_allowed))" ] ||
  fail "a million rows need $((large - small)) KiB more than a thousand; $growth_allowed KiB are allowed"
expect_equal "lines of text" 1000001 "$(text_rows "$work/large.txt")"
expect_equal "rows of HTML" 1000001 "$(html_rows "$work/large.html")"
expect_equal "rows of XML" 1000001 "$(xml_rows "$work/large.xml")"
expect_equal "rows of RTF" 1000001 "$(grep -c '\\trowd' "$work/large.rtf")"
expect_equal "rows of the Word document" 1000001 \
  "$(unzip -p "$work/large.docx" word/document.xml | grep -c '^<w:tr>')"
expect_equal "rows of the spreadsheet" 1000001 \
  "$(unzip -p "$work/large.xlsx" xl/worksheets/sheet1.xml | tr '<' '\n' | grep -c '^row ')"
