#!/usr/bin/env bash
# Has the command, or a program that uses every face or writes a classic report, write PDF, and other programs read it.
#
#   check_pdf.sh documents|tables|letters COMMAND...
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

# Programs that draw say nothing about the file.
check_drawing() {
  local name=$1
  mutool draw -q -F pgm -r 20 -o "$work/page-%d.pgm" "$work/$name.pdf" 2>"$work/$name.err"
  expect_equal "MuPDF's messages on $name.pdf" "" "$(grep -v 'ICC support' "$work/$name.err" || true)"
  gs -q -dNOPAUSE -dBATCH -dSAFER -sDEVICE=nullpage "$work/$name.pdf" >"$work/$name.err" 2>&1
  expect_equal "Ghostscript's messages on $name.pdf" "" "$(cat "$work/$name.err")"
  pdftotext "$work/$name.pdf" "$work/$name.read" 2>"$work/$name.err"
  expect_equal "poppler's messages on $name.pdf" "" "$(cat "$work/$name.err")"
  read_pdf drawn "$name" "$name"
}

# Other tools write the file again. Its source is copied too, to compare it with the new files.
write_again() {
  local input=$1 name=${1%.*} form
  mutool clean "$work/$name.pdf" "$work/$name-clean.pdf" >"$work/clean.err" 2>&1 || fail "mutool: $(cat "$work/clean.err")"
  qpdf --linearize "$work/$name.pdf" "$work/$name-linear.pdf" >"$work/linear.err" 2>&1 ||
    fail "qpdf: $(cat "$work/linear.err")"
  for form in clean linear; do
    check_syntax "$name-$form"
    cp "$work/$input" "$work/$name-$form.${input##*.}"
  done
}

# The words that five programs find, and where the outline and the links lead. The names are those of the sources. poppler
# leaves the outline out when it unites files.
check_contents() {
  local pdfs=() with_places=() name
  for name in "$@"; do
    pdfs+=("./${name%.*}.pdf")
    [ "${name##*.}" = csv ] || [ "${name%.*}" = together ] || with_places+=("$name")
  done
  (cd "$work" && export NODE_PATH="$root/node_modules" &&
    node "$root/tests/outputs/pdf_readers.mjs" pages.json "${pdfs[@]}" &&
    node "$root/tests/outputs/pdf_places.mjs" places.json "${pdfs[@]}") >"$work/node.log" 2>&1 ||
    fail "a PDF was not read: $(tail -3 "$work/node.log")"
  python3 "$root/tests/outputs/compare_pdf_words.py" "$work" "$work/pages.json" "$@" || fail "words were lost or changed"
  python3 "$root/tests/outputs/compare_pdf_places.py" "$work" "$work/places.json" "${with_places[@]}" ||
    fail "the outline or links lead elsewhere"
}

# check_inputs INPUT... -- OPTION...: each is written with the options.
check_inputs() {
  local inputs=() forms=() input name
  while [ "$1" != -- ]; do
    inputs+=("$1")
    shift
  done
  for input in "${inputs[@]}"; do
    name=${input%.*}
    write_with_text pdf "$input" "$name" "${@:2}"
    check_syntax "$name"
    check_drawing "$name"
    write_again "$input"
    forms+=("$input" "$name-clean.${input##*.}" "$name-linear.${input##*.}")
  done
  check_contents "${forms[@]}"
}

# Everything that a document can have, in the scripts of the fonts that come with the library.
write_sample() {
  cat <<'MARKDOWN'
# A sample

## Links

To [tables](#tables), [another script](#ελληνικά), <https://example.org/a_(b)?c=d&e=f#g>, and to
[an address whose text is so long that it does not fit into the rest of this line and goes on](https://example.org/long).
A [file](other.md), a [mail](mailto:a@example.org) and a [second link to tables](#tables).

##### Level five

- one
  - two, with **bold**, *slanted*, ***both***, `code` and ~~nothing~~
    1. three
    2. four, a [link in a list](https://example.org/list)

       A paragraph of an item.
  - [x] done
  - [ ] not done
- five

  > A quote in a list
  >
  > > and one in a quote

10. ten
11. eleven

```c
int main(void) {
  return 0;  // a long line of code that does not fit into the width of a page and is broken somewhere or elsewhere
}
```

## Tables

| Left | Right | Middle |
| :--- | ----: | :----: |
| [linked](https://example.org/cell) | 1 | ![](sales.png) |
| **bold** and a text that is a good deal longer than the others in its column, so that its lines break | 1000.5 | x |

## Ελληνικά

Η γρήγορη καφέ αλεπού πηδάει. Быстрая коричневая лиса прыгает. Արագ շագանակագույն աղվեսը. სწრაფი ყავისფერი მელა.
Ünïcödé, naïve, œuvre, Ąčęėįšųūž, Đặng Thị, Győr, İstanbul, € — “quoted” … ½ × ≤ ∑ → ♥.

### שפה

השועל החום המהיר קופץ.

### لغة

الثعلب البني السريع يقفز.

---

![](sales.png)
MARKDOWN
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
    cp "$root/docs/classic.md" "$root/docs/images/sales.png" "$work/"
    write_sample >"$work/sample.md"
    check_inputs classic.md sample.md --
    check_inputs sample.md -- --landscape --set pdf.font=serif --set pdf.paper=A5
    pdfunite "$work/classic.pdf" "$work/sample.pdf" "$work/together.pdf" 2>"$work/unite.err" ||
      fail "pdfunite: $(cat "$work/unite.err")"
    cat "$work/classic.md" "$work/sample.md" >"$work/together.md"
    check_contents together.md
    ;;
  tables)
    make_table 300 >"$work/table.csv"
    check_inputs table.csv --
    check_inputs table.csv -- --landscape
    ;;
  letters)
    python3 "$root/tests/outputs/check_pdf_letters.py" "$work" "${command[@]}" || fail "letters were lost or changed"
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
