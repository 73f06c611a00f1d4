#!/usr/bin/env bash
# Has a program write a document with everything that word processors can hold, and other programs read it: LibreOffice,
# and unrtf or pandoc and python3-docx.
#
#   check_sample_document.sh rtf|docx PROGRAM...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

format=$1
shift
"$@" "$work/sample.$format" || fail "no document was written"

for converted in fodt "txt:Text (encoded):UTF8" pdf; do
  (cd "$work" && timeout 180 soffice "-env:UserInstallation=file://$work/settings" --headless --convert-to "$converted" \
    --outdir office "sample.$format" >office.log 2>&1) || fail "LibreOffice did not convert it: $(cat "$work/office.log")"
done

found() {
  xmllint --xpath "$1" "$work/office/sample.fodt"
}

# The numbers and bullets of lists are those that LibreOffice makes.
expect_items() {
  expect_equal "the items from $1 to $2" "$3" \
    "$(sed -n "/$1/,/$2/p" "$work/office/sample.txt" | sed '1d;$d;s/^[[:space:]]*//' | tr '\t\n' ' |')"
}

check_lists() {
  expect_items "Then a numbered list" "It starts again" "1. one|2. two|"
  expect_items "It starts again" "And one that starts" \
    "1. first|A further paragraph of the item.|2. second|A further paragraph of the item.|"
  expect_items "And one that starts at 9" "^Nested lists$" "9. nine|10. ten|"
}

check_structure() {
  expect_equal "the title" "A sample of {RTF}" "$(found 'string(//*[local-name()="title"])')"
  expect_equal "the headings" 6 "$(found 'count(//*[local-name()="h"])')"
  expect_equal "the link" "https://example.org/a?b={c}" \
    "$(found 'string((//*[local-name()="p"]/*[local-name()="a" and not(starts-with(@*[local-name()="href"], "#"))]/@*[local-name()="href"])[1])')"
  expect_equal "the page numbers of the contents" 4 "$(found 'count(//*[local-name()="bookmark-ref"])')"
  expect_equal "the pictures" 2 "$(found 'count(//*[local-name()="image"])')"
  expect_equal "the direction of a paragraph in Arabic" rl-tb \
    "$(found 'string(//*[local-name()="style" and @*[local-name()="name"] = //*[local-name()="p" and contains(., "from the right")]/@*[local-name()="style-name"]]/*[local-name()="paragraph-properties"]/@*[local-name()="writing-mode"])')"
  expect_equal "columns spanned" 1 "$(found 'count(//@*[name()="table:number-columns-spanned" and . = "2"])')"
}

# In the printed pages no word is broken and no column is lost.
check_pages() {
  pdftotext -layout "$work/office/sample.pdf" "$work/sample.pages"
  local column
  for column in $(seq 0 69); do
    grep -qw "Head$column" "$work/sample.pages" || fail "the heading of column $column is not on a page"
    grep -qw "44/$column" "$work/sample.pages" || fail "the last row's column $column is not on a page"
  done
  for column in $(seq 0 13); do
    grep -qw "Column$column" "$work/sample.pages" || fail "the heading 'Column$column' is broken"
  done
  grep -q 'Page 1 of ' "$work/sample.pages" || fail "the footer is not on the first page"
}

# The size of a page, as in "595 x 842".
size_of_page() {
  pdfinfo -f "$1" -l "$1" "$work/office/sample.pdf" | sed -nE 's/^Page +[0-9]+ size: +([0-9]+)[.0-9]* x ([0-9]+).*/\1 x \2/p'
}

page_with() {
  local page
  for page in $(seq 1 "$(pdfinfo "$work/office/sample.pdf" | sed -n 's/^Pages: *//p')"); do
    if pdftotext -f "$page" -l "$page" "$work/office/sample.pdf" - | grep -Fw "$1" >"$work/line"; then
      echo "$page"
      return
    fi
  done
  fail "no page has '$1'"
}

# The table in parts is on turned pages, its heading too; what comes before and after it is upright.
check_turned_pages() {
  expect_equal "the page of a heading" "$(page_with Head0)" "$(page_with "A table in parts")"
  expect_equal "the table's page" "841 x 595" "$(size_of_page "$(page_with Head0)")"
  expect_equal "the page before it" "595 x 841" "$(size_of_page "$(page_with "Sum over two columns")")"
  expect_equal "the page after it" "595 x 841" "$(size_of_page "$(page_with "An item with a table:")")"
}

check_with_unrtf() {
  (cd "$work" && unrtf --text sample.rtf >sample.unrtf 2>unrtf.err) || fail "unrtf: $(cat "$work/unrtf.err")"
  for heading in Prose Lists "Nested lists" Tables "A table in parts" Pictures; do
    grep -qF "$heading" "$work/sample.unrtf" || fail "unrtf does not find the heading '$heading'"
  done
}

check_parts() {
  test_office_documents "$work/sample.docx"
  unzip -qq -d "$work/parts" "$work/sample.docx"
  find "$work/parts" -type f ! -path '*/media/*' -print0 | xargs -0 xmllint --noout || fail "a part is not well-formed"
}

# The names of the styles are those that a person finds in a word processor.
check_with_python() {
  /usr/bin/python3 - "$work/sample.docx" <<'PYTHON' || fail "python3-docx does not find what was written"
import sys
import docx

document = docx.Document(sys.argv[1])
assert document.core_properties.title == "A sample of {RTF}"
assert document.core_properties.author == "Åsa"
styles = [paragraph.style.name for paragraph in document.paragraphs]
for style in ["Title", "Heading 1", "Heading 2", "Quote", "Code", "List Paragraph", "toc 1", "Horizontal Line"]:
    assert style in styles, (style, styles)
prices = document.tables[0]
assert prices.style.name == "Table"
assert [cell.text for cell in prices.rows[0].cells] == ["Article", "Description", "Price", "Pieces"]
assert [cell.text for cell in prices.rows[2].cells] == ["Article 2", "short", "25", "2000"]
assert prices.rows[6].cells[0]._tc is prices.rows[6].cells[1]._tc
assert len(document.sections) >= 4
assert document.sections[0].header.paragraphs[0].text.startswith("A sample of {RTF}")
assert len(document.inline_shapes) == 2
PYTHON
}

check_with_pandoc() {
  pandoc -f docx -t gfm --wrap=none -o "$work/sample.md" "$work/sample.docx" || fail "pandoc did not convert it"
  local line
  while IFS= read -r line; do
    grep -qxF -- "$line" "$work/sample.md" || fail "pandoc does not find '$line': $(head -90 "$work/sample.md")"
  done <<'LINES'
# Prose
## Nested lists
-   [ ] a task to do
9.  nine
        1.  inner one
    int main() {
> The second paragraph.
<th>Article</th>
<td colspan="2">Sum over two columns</td>
LINES
  # shellcheck disable=SC2016  # code in Markdown
  grep -qF '**strong** *emphasis* `code()` ~~deleted~~ ' "$work/sample.md" || fail "pandoc does not find the spans"
  grep -qF '[one to the tables](#tables)' "$work/sample.md" || fail "pandoc does not find the link"
}

check_lists
check_structure
check_pages
check_turned_pages
if [ "$format" = rtf ]; then
  check_with_unrtf
else
  check_parts
  check_with_python
  check_with_pandoc
fi
