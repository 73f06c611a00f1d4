#!/usr/bin/env bash
# Has a program write the same cells as a document and with libxlsxwriter: openpyxl finds the same in both.
#
#   check_peer_workbooks.sh PROGRAM...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

"$@" "$work/own.xlsx" "$work/peer.xlsx" || fail "the program failed"
test_office_documents "$work/own.xlsx"
/usr/bin/python3 - "$work/own.xlsx" "$work/peer.xlsx" <<'PYTHON' || fail "openpyxl finds other cells in the two files"
import datetime
import itertools
import sys

import openpyxl
from openpyxl.utils.escape import unescape


def cells(path):
    for row in openpyxl.load_workbook(path).active.iter_rows():
        for cell in row:
            value = cell.value
            # Of times, one file may have the nearest number and the other the next one.
            if isinstance(value, datetime.datetime):
                value = round(value.timestamp(), 2)
            value = unescape(value) if isinstance(value, str) else value
            font = cell.font
            yield cell.coordinate, cell.data_type, value, cell.number_format, font.name, font.sz, font.b, cell.fill.fill_type


pairs = list(itertools.zip_longest(cells(sys.argv[1]), cells(sys.argv[2])))
for own, peer in pairs:
    if own != peer:
        sys.exit("%s\n%s" % (own, peer))
assert len(pairs) == 12000, len(pairs)
PYTHON
