#!/usr/bin/env bash
# The table of line break classes must be what its script makes of the Unicode Character Database.
#
#   check_line_break_classes.sh SOURCES
set -euo pipefail

table="$1/src/text/line_breaking/class_table.h"
if ! "$1/scripts/line_break_classes.py" | diff "$table" - >&2; then
  printf 'check_line_break_classes: make %s again with scripts/line_break_classes.py\n' "$table" >&2
  exit 1
fi
