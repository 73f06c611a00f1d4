#!/usr/bin/env bash
# Has the command write Word documents with references that other programs made: pandoc, python3-docx, LibreOffice. Then
# python3-docx finds the looks of the reference at the text, LibreOffice prints it, and pandoc reads what it reads
# without a reference. A reference with changed bytes is refused or gives a document that python3-docx opens.
#
#   check_reference.sh COMMAND...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command=("$@")

office() {
  (cd "$work" && timeout 180 soffice "-env:UserInstallation=file://$work/settings" --headless --convert-to "$1" \
    --outdir "$2" "$3" >office.log 2>&1) || fail "LibreOffice did not convert $3: $(cat "$work/office.log")"
}

make_references() {
  pandoc --print-default-data-file reference.docx >"$work/pandoc.docx"
  cat >"$work/office.html" <<'HTML'
<h1>A</h1><p>b</p><blockquote>c</blockquote><ol><li>d</li></ol><pre>e</pre><table><tr><th>f</th></tr></table>
HTML
  office odt . office.html
  office docx . office.odt
  /usr/bin/python3 - "$work" <<'PYTHON' || fail "python3-docx made no references"
import sys
import docx
from docx.enum.style import WD_STYLE_TYPE
from docx.shared import Pt, RGBColor

folder = sys.argv[1]
docx.Document().save(folder + "/python.docx")
company = docx.Document()
company.add_paragraph("Text of the reference", "Heading 1")
company.sections[0].header.paragraphs[0].text = "Header of the reference"
company.styles["Normal"].font.name = "DejaVu Serif"
heading = company.styles["Heading 1"]
heading.font.color.rgb = RGBColor(0xC0, 0x10, 0x20)
heading.font.size = Pt(31)
fonts = heading.element.rPr.rFonts
for name in list(fonts.attrib):
    del fonts.attrib[name]  # those of the theme
heading.font.name = "DejaVu Sans Mono"
# As Word in another language has it: an id of its own for the name that all share.
heading.element.set("{http://schemas.openxmlformats.org/wordprocessingml/2006/main}styleId", "berschrift1")
company.styles.add_style("Code", WD_STYLE_TYPE.PARAGRAPH).font.color.rgb = RGBColor(0, 0x80, 0)
company.save(folder + "/company.docx")
PYTHON
}

# Every reference gives a sound document in which pandoc finds the same content.
check_reference() {
  local name=$1 made="$work/with_$1.docx"
  "${command[@]}" -q --toc "$root/tests/outputs/every_kind.md" --reference "$work/$name.docx" -o "$made" ||
    fail "the command failed with the reference of $name"
  test_office_documents "$made"
  rm -rf "$work/parts"
  unzip -qq -d "$work/parts" "$made"
  find "$work/parts" -type f ! -path '*/media/*' -print0 | xargs -0 xmllint --noout || fail "$name: a part is not well-formed"
  pandoc -f docx -t gfm --wrap=none "$made" >"$work/with.md" || fail "$name: pandoc did not convert it"
  diff -u "$work/plain.md" "$work/with.md" || fail "$name: pandoc finds other content"
  office pdf . "with_$name.docx"
  pdftotext "$work/with_$name.pdf" - | tr '\n' ' ' >"$work/printed"
  grep -qF 'A document of every kind of content' "$work/printed" || fail "$name: the heading is not printed"
  /usr/bin/python3 - "$made" <<'PYTHON' || fail "$name: python3-docx does not find the styles"
import sys
import docx

document = docx.Document(sys.argv[1])
names = {paragraph.style.name for paragraph in document.paragraphs}
assert {"Heading 1", "Quote", "Code", "toc 2"} <= names, names
w = "{http://schemas.openxmlformats.org/wordprocessingml/2006/main}"
styles = document.styles.element.findall(w + "style")
for kind in ["paragraph", "character", "table", "numbering"]:
    defaults = [style for style in styles if style.get(w + "type") == kind and style.get(w + "default") == "1"]
    assert len(defaults) == 1, (kind, defaults)
ids = [style.get(w + "styleId") for style in styles]
assert len(ids) == len({one.lower() for one in ids}), ids
for part in [document.element, document.styles.element]:
    for tag in ["pStyle", "rStyle", "tblStyle", "basedOn", "next", "link"]:
        for reference in part.iter(w + tag):
            assert reference.get(w + "val") in ids, (tag, reference.get(w + "val"))
PYTHON
}

check_company() {
  /usr/bin/python3 - "$work/with_company.docx" <<'PYTHON' || fail "the look of the company is not that of the text"
import sys
import docx
from docx.shared import Pt, RGBColor

document = docx.Document(sys.argv[1])
heading = next(paragraph for paragraph in document.paragraphs if paragraph.style.name == "Heading 1")
assert heading.text == "A document of every kind of content", heading.text
assert heading.style.font.color.rgb == RGBColor(0xC0, 0x10, 0x20)
assert heading.style.font.size == Pt(31)
assert heading.style.font.name == "DejaVu Sans Mono"
assert document.styles["Normal"].font.name == "DejaVu Serif"
code = next(paragraph for paragraph in document.paragraphs if paragraph.style.name == "Code")
assert code.style.font.color.rgb == RGBColor(0, 0x80, 0)
assert "reference" not in " ".join(paragraph.text for paragraph in document.paragraphs)
assert document.sections[0].header.is_linked_to_previous or not document.sections[0].header.paragraphs[0].text
assert round(document.sections[0].page_width.mm) == 210
PYTHON
  pdffonts "$work/with_company.pdf" | grep -q DejaVuSerif || fail "the text is not in the font of the reference"
  pdffonts "$work/with_company.pdf" | grep -q DejaVuSansMono || fail "the headings are not in the font of the reference"
}

# One byte in each of some hundred places is another.
check_changed_bytes() {
  /usr/bin/python3 - "$work" "${command[@]}" <<'PYTHON' || fail "a changed reference is neither refused nor used"
import os
import subprocess
import sys
import docx

folder, *command = sys.argv[1:]
with open(folder + "/pandoc.docx", "rb") as file:
    whole = file.read()
with open(folder + "/in.md", "w") as file:
    file.write("# A\n\n> b\n")
made = folder + "/changed_out.docx"
refused = used = 0
for place in range(0, len(whole), len(whole) // 150):
    changed = bytearray(whole)
    changed[place] ^= 1 << place % 8
    with open(folder + "/changed.docx", "wb") as file:
        file.write(changed)
    run = subprocess.run(command + ["-q", folder + "/in.md", "--reference", folder + "/changed.docx", "-o", made],
                         capture_output=True, text=True)
    if run.returncode == 0:
        docx.Document(made)
        os.remove(made)
        used += 1
    else:
        assert run.returncode == 1 and "The reference '" in run.stderr and not os.path.exists(made), run
        refused += 1
assert refused > 20 and used > 20, (refused, used)
PYTHON
}

make_references
"${command[@]}" -q --toc "$root/tests/outputs/every_kind.md" -o "$work/plain.docx" || fail "the command failed"
pandoc -f docx -t gfm --wrap=none "$work/plain.docx" >"$work/plain.md"
for name in pandoc python office company; do
  check_reference "$name"
done
check_company
check_changed_bytes
