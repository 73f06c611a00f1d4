#!/usr/bin/env bash
# Has the command write PDF with tags, and other programs read them.
#
#   check_tags.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command=("$@")

write_text() {
  cat >"$work/text.md" <<'END'
# Prices

Text with `code` and [a link](https://example.org/), and [inside](#second).

## Second

- one
- two
  1. inner

> A quote.

```c
int x;
int y;
```

| A | B |
|---|---|
| 1 | [x](https://example.com) |
END
}

tagged() {
  local input=$1 name=$2
  shift 2
  (cd "$work" && "${command[@]}" "$input" --set pdf.tagged=yes --set header='{title}||{page} / {pages}' "$@" \
    -o "$name.pdf" 2>"$name.err") || fail "the command failed on $input: $(cat "$work/$name.err")"
  qpdf --check "$work/$name.pdf" >"$work/qpdf.txt" 2>&1 || fail "qpdf on $name: $(cat "$work/qpdf.txt")"
  ! grep -q WARNING "$work/qpdf.txt" || fail "qpdf warns of $name: $(cat "$work/qpdf.txt")"
}

# The structure with its texts, as poppler finds it.
structure_of() {
  pdfinfo -struct-text "$work/$1.pdf" >"$work/$1.structure" 2>"$work/$1.err"
  expect_equal "poppler's messages on $1.pdf" "" "$(cat "$work/$1.err")"
  sed 's/^ *//; s/ ([a-z]*):*$//' "$work/$1.structure" | grep -v '^Object'
}

check_text() {
  tagged text.md text --toc
  expect_equal "the structure of text.pdf" "$(printf '%s\n' Document H1 '"Prices"' TOC TOCI Link '"Second"' '"1"' \
    P '"Text with "' Code '"code"' '" and "' Link '"a link"' '", and "' Link '"inside"' '"."' H2 '"Second"' \
    L LI Lbl '"•"' LBody P '"one"' LI Lbl '"•"' LBody P '"two"' L '/ListNumbering /Decimal' LI Lbl '"1."' LBody P \
    '"inner"' BlockQuote P '"A quote."' Code '/Placement /Block' '"int x; int y;"' Table THead TR \
    TH: '/Scope /Column' '"A"' TH: '/Scope /Column' '"B"' TBody TR TD '"1"' TD Link '"x"')" "$(structure_of text)"
  expect_equal "the tags of text.pdf in pdf.js" "Root(Document(H1(.) TOC(TOCI(Link(. @ . @))) P(. Code(.) . Link(. @) . \
Link(. @) .) H2(.) L(LI(Lbl(.) LBody(P(.))) LI(Lbl(.) LBody(P(.) L(LI(Lbl(.) LBody(P(.))))))) BlockQuote(P(.)) Code(.) \
Table(THead(TR(TH(.) TH(.))) TBody(TR(TD(.) TD(Link(. @)))))))
true" "$(NODE_PATH="$root/node_modules" node "$root/tests/outputs/read_tags.mjs" "$work/text.pdf" 2>/dev/null | tail -n 2)"
}

# Each text of a table is in the structure, in order; header rows of further pages are not.
check_table() {
  make_table 300 >"$work/table.csv"
  tagged table.csv table
  structure_of table >"$work/table.tags"
  expect_equal "rows" 301 "$(grep -c '^TR$' "$work/table.tags")"
  expect_equal "header cells" 6 "$(grep -c '^TH:$' "$work/table.tags")"
  expect_equal "cells" 1800 "$(grep -c '^TD$' "$work/table.tags")"
  expect_equal "first column" "$(seq 300)" "$(grep -x '"[0-9]*"' "$work/table.tags" | tr -d '"')"
}

write_text
check_text
check_table
