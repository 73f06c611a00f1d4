#!/usr/bin/env bash
# Has the library write workbooks of random values, and openpyxl and LibreOffice read them.
#
#   check_typed_workbooks.sh LIBRARY [WORKBOOKS SHEETS]
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# Debian's own Python has Debian's modules, whichever Python comes first on the path.
SCRIVALEN_LIBRARY="$1" PYTHONPATH="$root/python" PYTHONDONTWRITEBYTECODE=1 \
  /usr/bin/python3 "$root/tests/outputs/typed_workbooks.py" "$work" "${2:-3}" "${3:-30}"
test_office_documents "$work"/*.xlsx
