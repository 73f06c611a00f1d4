#!/usr/bin/env bash
# Has the library write hostile texts into workbooks and Word documents, and openpyxl, python-docx and LibreOffice read
# them.
#
#   check_hostile_office.sh LIBRARY
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# Debian's own Python has Debian's modules, whichever Python comes first on the path.
SCRIVALEN_LIBRARY="$1" PYTHONPATH="$root/python" PYTHONDONTWRITEBYTECODE=1 \
  /usr/bin/python3 -W ignore "$root/tests/outputs/hostile_office.py" "$work"
test_office_documents "$work"/*.xlsx "$work"/*.docx
