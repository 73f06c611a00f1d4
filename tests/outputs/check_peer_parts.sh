#!/usr/bin/env bash
# Compares the parts of workbooks and Word documents, element by element, with what libxlsxwriter, LibreOffice and pandoc
# write for the same content.
#
#   check_peer_parts.sh SHEET_PROGRAM DOCUMENT_PROGRAM
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

"$1" "$work/own.xlsx" "$work/peer.xlsx" "$root/docs/images/sales.png" || fail "no workbooks were written"
"$2" "$work/own.docx" || fail "no Word document was written"
test_office_documents "$work/own.xlsx" "$work/own.docx"
pandoc -f docx -t docx -o "$work/pandoc.docx" "$work/own.docx" || fail "pandoc did not write the document again"

# compare FORMAT PEER
compare() {
  (cd "$work" && timeout 180 soffice "-env:UserInstallation=file://$work/settings" --headless --convert-to "$1" \
    --outdir office "own.$1" >office.log 2>&1) || fail "LibreOffice did not convert it: $(cat "$work/office.log")"
  /usr/bin/python3 "$root/tests/outputs/compare_parts.py" "$1" "$work/own.$1" "$work/$2" "$work/office/own.$1" ||
    fail "the parts of $1 differ from those of other programs"
}

compare xlsx peer.xlsx
compare docx pandoc.docx
