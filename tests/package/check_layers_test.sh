#!/usr/bin/env bash
# Checks that check_layers.sh finds each wrong include in a small tree of sources that is otherwise right.
#
#   check_layers_test.sh
set -euo pipefail

check="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/check_layers.sh"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
failures=0

# put FILE INCLUDE: adds an #include to FILE; INCLUDE has its quotes or angle brackets.
put() {
  mkdir -p "$work/$(dirname "$1")"
  printf '#include %s\n' "$2" >>"$work/$1"
}

write_tree() {
  rm -rf "${work:?}"/*
  put src/text/utf.h '<string>'
  put src/system/files/files.cpp '"text/utf.h"'
  put src/output/host_handlers.cpp '"scrivalen/host.h"'
  put src/report/report.cpp '"scrivalen/report.h"'
  put src/document/model/event.h '"text/colors.h"'
  put src/formats/text/text_writer.cpp '"document/model/writer.h"'
  put src/api/document_api.cpp '"formats/document_formats.h"'
  put src/api/document_api.cpp '<scrivalen/document.h>'
  put src/formats/help/help.cpp '"formats/markup/html.h"'
  put src/formats/markup/html/html_writer.cpp '"formats/markup/base64.h"'
  put src/formats/pdf/layout/pages.cpp '"formats/pdf/objects/page.h"'
  put src/formats/pdf/layout/pages.cpp '"formats/pdf/fonts/fonts.h"'
  put src/formats/pdf/fonts/fonts.h '"formats/pdf/objects/file.h"'
  put src/formats/pdf/layout/document.cpp '"scrivalen/pdf_doc.h"'
  put src/formats/rtf/document/tables/table_writer.cpp '"formats/rtf/document/escape.h"'
  put src/formats/pdf/typeset/pages/canvas.cpp '"formats/pdf/typeset/file/syntax.h"'
  put src/formats/multi_report.cpp '"formats/rtf/rtf_report.h"'
  put include/scrivalen/report.h '<scrivalen/export.h>'
  put include/scrivalen/multi_report.h '<scrivalen/report.h>'
  put apps/scrivalen/command.cpp '"readers/csv/csv_reader.h"'
  put apps/scrivalen/command.cpp '<scrivalen/multi_report.h>'
  put apps/scrivalen/command.cpp '"output/target_file.h"'
}

write_tree
"$check" "$work" >"$work/found" || {
  printf 'check_layers_test: the tree is right, but %s\n' "$(cat "$work/found")" >&2
  failures=1
}

# expect_found FILE INCLUDE REASON
expect_found() {
  write_tree
  put "$1" "$2"
  if "$check" "$work" >"$work/found" || ! grep -qF "$1:" "$work/found" || ! grep -qF "$3" "$work/found"; then
    printf 'check_layers_test: %s may not include %s, but: %s\n' "$1" "$2" "$(cat "$work/found")" >&2
    failures=1
  fi
}

expect_found src/text/utf.h '"system/files/files.h"' "above"
expect_found src/text/utf.h '<scrivalen/text.h>' "above"
expect_found src/system/files/files.cpp '"output/clog.h"' "above"
expect_found src/output/host_handlers.cpp '"report/report_closing.h"' "above"
expect_found src/output/host_handlers.cpp '  "scrivalen/report.h"' "above"
expect_found src/report/report.cpp '"formats/markup/html.h"' "above"
expect_found src/report/report.cpp '"document/model/event.h"' "beside"
expect_found src/document/model/event.h '"report/report_error.h"' "beside"
expect_found src/document/model/event.h '"scrivalen/report.h"' "beside"
expect_found src/document/model/event.h '"formats/markup/html.h"' "above"
expect_found src/formats/multi_report.cpp '"api/document_api.h"' "above"
expect_found src/report/report.cpp '"scrivalen/html_report.h"' "above"
expect_found src/formats/rtf/rtf_doc.cpp '"formats/markup/html.h"' "another format"
expect_found src/formats/rtf/rtf_doc.cpp '"scrivalen/pdf_doc.h"' "another format"
expect_found src/formats/rtf/document/prolog/prolog.cpp '"formats/rtf/rtf_doc.h"' "another format"
expect_found src/formats/rtf/rtf_doc.cpp '"formats/rtf/document/escape.h"' "another format"
expect_found src/formats/markup/html.cpp '"formats/help/help_project.h"' "another format"
expect_found src/formats/markup/xml_writer.cpp '"formats/markup/html/html_links.h"' "another format"
expect_found src/formats/pdf/objects/page.cpp '"formats/pdf/layout/pages.h"' "another format"
expect_found src/formats/pdf/objects/page.cpp '"formats/pdf/fonts/fonts.h"' "another format"
expect_found src/formats/pdf/fonts/fonts.cpp '"formats/pdf/layout/pages.h"' "another format"
expect_found src/formats/pdf/typeset/pages/canvas.cpp '"formats/pdf/objects/page.h"' "another format"
expect_found src/formats/pdf/layout/pages.cpp '"formats/pdf/typeset/pages/canvas.h"' "another format"
expect_found src/formats/text/text_report.cpp '"scrivalen/multi_report.h"' "above"
expect_found src/text/utf.h '"platform/utf.h"' "no layer"
expect_found src/platform/utf.h '"text/utf.h"' "no layer"
expect_found src/strays.cpp '<string>' "no layer"
expect_found include/scrivalen/report.h '<scrivalen/scrivalen.h>' "above"
expect_found apps/scrivalen/command.cpp '"report/report_error.h"' "the command"
expect_found apps/scrivalen/readers/csv/csv_reader.cpp '"formats/rtf/rtf_report.h"' "the command"

write_tree
for number in {1..24}; do
  put "src/text/file$number.h" '<string>'
done
if "$check" "$work" >"$work/found" || ! grep -q '25 src/text$' "$work/found"; then
  printf 'check_layers_test: a folder of 25 files is too full, but: %s\n' "$(cat "$work/found")" >&2
  failures=1
fi

rm -rf "${work:?}"/*
mkdir "$work/src" "$work/include" "$work/apps"
if "$check" "$work" >/dev/null; then
  printf 'check_layers_test: a tree without sources passes\n' >&2
  failures=1
fi
exit "$failures"
