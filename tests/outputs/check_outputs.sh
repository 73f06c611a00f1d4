#!/usr/bin/env bash
# Has the command write documents or tables, and third-party programs read them.
#
#   check_outputs.sh documents|tables COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

kind=$1
shift
command=("$@")
vnu="$root/node_modules/vnu-jar/build/dist/vnu.jar"

# The command runs in the folder of its files and gets plain names: a Windows program takes a path for an option.
write_reports() {
  local input=$1 name=${1%.*}
  (cd "$work" && "${command[@]}" "$input" --separator '\t' -o "$name.txt" -o "$name.html" -o "$name.xml" >"$name.out" 2>"$name.err") ||
    fail "the command failed on $input: $(cat "$work/$name.err")"
  expect_equal "bytes on standard output for $input" 0 "$(wc -c <"$work/$name.out")"
  expect_equal "messages for $input" "" "$(cat "$work/$name.err")"
}

check_text() {
  iconv -f UTF-8 -t UTF-16 "$work/$1" >/dev/null || fail "$1 is not UTF-8 text"
}

check_xml() {
  xmllint --stream --huge --noout --schema "$root/docs/document.xsd" "$work/$1" || fail "$1 is not valid XML"
}

check_html() {
  [ -f "$vnu" ] || fail "the HTML validator is missing; scripts/setup.sh test installs it"
  (cd "$work" && java -jar "$vnu" --errors-only "$@") || fail "the validator finds errors in $*"
}

# A page as a browser parses it, as markup again.
browser_sees() {
  (cd "$work" && timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-dev-shm-usage \
    --user-data-dir="$work/profile" --dump-dom "$1" 2>"$work/chromium.err") ||
    fail "the browser did not open $1: $(tail -3 "$work/chromium.err")"
}

count_headings() {
  { grep -o '<h[1-6][ >]' || true; } | wc -l
}

check_document() {
  local name=$1 headings
  check_text "$name.txt"
  check_xml "$name.xml"
  headings="$(cmark --to html "$work/$name.md" | count_headings)"
  [ "$headings" -gt 0 ] || fail "$name.md has no headings to look for"
  expect_equal "headings in $name.html" "$headings" "$(browser_sees "$name.html" | count_headings)"
}

check_documents() {
  local document names=()
  mkdir "$work/docs"
  cp -r "$root/docs/images" "$work/docs/"
  for document in "$root"/README.md "$root"/docs/*.md; do
    [ -f "$document" ] || fail "$document is missing"
    cp "$document" "$work/"
    names+=("$(basename "$document" .md)")
  done
  for document in "${names[@]}"; do
    write_reports "$document.md"
    check_document "$document"
  done
  check_html "${names[@]/%/.html}"
}

write_small_table() {
  cat >"$work/small.csv" <<'CSV'
Name,Motto,Price
"Müller & Söhne","""Fast"", they say",3 €
<b>,a\b{c} ]]>,😀
,"two
lines",
CSV
}

xml_cell() {
  xmllint --xpath "string((//*[local-name()='row'])[$1]/*[local-name()='cell'][$2])" "$work/small.xml"
}

check_small_table() {
  write_small_table
  write_reports small.csv
  check_text small.txt
  check_xml small.xml
  expect_equal "the text" "$(printf '%s\t%s\t%s\n' Name Motto Price 'Müller & Söhne' '"Fast", they say' '3 €' \
    '<b>' 'a\b{c} ]]>' '😀' '' 'two lines' '')" "$(cat "$work/small.txt")"
  expect_equal "cell 1,1" 'Müller & Söhne' "$(xml_cell 2 1)"
  expect_equal "cell 1,2" '"Fast", they say' "$(xml_cell 2 2)"
  expect_equal "cell 2,1" '<b>' "$(xml_cell 3 1)"
  expect_equal "cell 2,2" 'a\b{c} ]]>' "$(xml_cell 3 2)"
  expect_equal "cell 2,3" '😀' "$(xml_cell 3 3)"
  expect_equal "cell 3,3" '' "$(xml_cell 4 3)"
  browser_sees small.html >"$work/small.dom"
  grep -qF '<td>Müller &amp; Söhne</td><td>"Fast", they say</td><td>3 €</td>' "$work/small.dom" ||
    fail "the browser does not show the first row: $(cat "$work/small.dom")"
  grep -qF '<td>&lt;b&gt;</td><td>a\b{c} ]]&gt;</td><td>😀</td>' "$work/small.dom" ||
    fail "the browser does not show the second row: $(cat "$work/small.dom")"
}

check_large_table() {
  local rows=100000
  make_table "$rows" >"$work/large.csv"
  write_reports large.csv
  check_text large.txt
  check_xml large.xml
  expect_equal "lines of text" "$((rows + 1))" "$(text_rows "$work/large.txt")"
  expect_equal "rows of HTML" "$((rows + 1))" "$(html_rows "$work/large.html")"
  expect_equal "rows of XML" "$((rows + 1))" "$(xml_rows "$work/large.xml")"
}

check_tables() {
  check_small_table
  check_large_table
  check_html small.html large.html
}

case "$kind" in
  documents) check_documents ;;
  tables) check_tables ;;
  *) fail "unknown kind '$kind'" ;;
esac
