#!/usr/bin/env bash
# Has the library write texts in Hebrew, Arabic and Latin letters into Word documents and RTF, and python-docx and
# LibreOffice say in which direction each paragraph is, and where it is on the page.
#
#   check_directions.sh LIBRARY
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# Debian's own Python has Debian's modules, whichever Python comes first on the path.
SCRIVALEN_LIBRARY="$1" PYTHONPATH="$root/python" PYTHONDONTWRITEBYTECODE=1 \
  /usr/bin/python3 -W ignore "$root/tests/outputs/office_directions.py" "$work"
