#!/usr/bin/env bash
# Has the command write documents from files of Debian packages, and third-party programs read them: no word is lost.
#
#   check_words.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command=("$@")
documents="$root/build/documents"
export TMPDIR="$work/temporary"
mkdir "$TMPDIR"

# PACKAGE PATH, compressed or not. Between them they have prose, code, nested and numbered lists, tables, raw HTML,
# front matter, badges, and Arabic, Chinese, Cyrillic, Japanese and Korean.
markdown_files() {
  cat <<'LIST'
golang-github-gomarkdown-markdown-dev */testdata/Backslash escapes.text
golang-github-gomarkdown-markdown-dev */testdata/Markdown Documentation - Syntax.text
golang-github-gomarkdown-markdown-dev */testdata/Ordered and unordered lists.text
golang-github-gomarkdown-markdown-dev */testdata/md2.md
libjs-bootstrap4 */libjs-bootstrap4/README.md
libjs-bootstrap4 */components/badge.md
libjs-bootstrap4 */content/tables.md
libjs-bootstrap4 */getting-started/build-tools.md
libjs-bootstrap4 */getting-started/contents.md
libjs-bootstrap4 */layout/grid.md
librust-bat-dev */registry/bat-0.22.1/README.md
librust-bat-dev */doc/README-ja.md
librust-bat-dev */doc/README-ko.md
librust-bat-dev */doc/README-ru.md
librust-bat-dev */doc/README-zh.md
librust-bat-dev */doc/alternatives.md
librust-bat-dev */source/Markdown/example.md
librust-regex-dev */UNICODE.md
node-marked */INDEX.md
node-marked */USING_ADVANCED.md
python3-arabic-reshaper */README.md
r-cran-data.table */NEWS.md
ruby-grape */README.md
ruby-sinatra */README.md
LIST
}

# With semicolons, tabs, quotes, line breaks in cells, Latin-1, empty cells, comments, 50 and 104 columns, 2,839 rows.
table_files() {
  cat <<'LIST'
gdal-data */ozi_datum.csv
gdal-data */s57attributes.csv
gdal-data */s57objectclasses.csv
gdal-data */stateplane.csv
librust-bat-dev */source/CSV/comma_in_quotes.csv
r-cran-data.table */1680-fread-header-encoding.csv
r-cran-data.table */doublequote_newline.csv
r-cran-data.table */grr.csv
r-cran-data.table */issue_2051.csv
r-cran-data.table */melt-warning-1752.tsv
r-cran-data.table */quoted_no_header.csv
r-cran-data.table */noquote.csv
LIST
}

# take EXTENSION: copies the listed files, and sets names to their names in the working folder.
take() {
  local package path found
  while read -r package path; do
    found="$(find "$documents/$package" -type f \( -path "$path" -o -path "$path.gz" \))"
    [ -f "$found" ] || fail "$documents/$package has no $path, or several; scripts/setup.sh test fetches it"
    names+=("file${#names[@]}.${1:-${path##*.}}")
    case "$found" in
      *.gz) gzip -dc "$found" ;;
      *) cat "$found" ;;
    esac >"$work/${names[-1]}"
  done
}

write_documents() {
  local input name
  for input in "$@"; do
    name="${input%.*}"
    (cd "$work" && "${command[@]}" "$input" -q --separator '\t' --set text.width=10000 -o "$name.html" -o "$name.xml" \
      -o "$name.out.md" -o "$name.txt" -o "$name.rtf" -o "$name.chm" -o "$name.pdf") || fail "the command failed on $input"
    (cd "$work" && "${command[@]}" "$input" -q -o "$name.aligned.txt") || fail "the command failed on $input"
    extract_chmLib "$work/$name.chm" "$work/$name.help" >"$work/extract.out" || fail "chmlib does not open $name.chm"
  done
}

convert_rtf() {
  (cd "$work" && timeout 250 soffice "-env:UserInstallation=file://$work/settings" --headless --convert-to fodt ./*.rtf \
    >office.log 2>&1) || fail "LibreOffice did not convert the files: $(tail -3 "$work/office.log")"
}

read_pdf() {
  (cd "$work" && NODE_PATH="$root/node_modules" node "$here/pdf_readers.mjs" pages.json ./*.pdf >readers.log 2>&1) ||
    fail "a PDF was not read: $(tail -3 "$work/readers.log")"
}

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
names=()
take md < <(markdown_files)
take "" < <(table_files)
expect_equal "the number of files" 36 "${#names[@]}"
write_documents "${names[@]}"
convert_rtf
read_pdf
python3 "$here/compare_words.py" "$work" "${names[@]}" || fail "words were lost or changed"
python3 "$here/compare_pdf_words.py" "$work" "$work/pages.json" "${names[@]}" || fail "words were lost or changed in PDF"
