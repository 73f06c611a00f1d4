#!/usr/bin/env bash
# Reads every #include of the sources and fails on one that goes upward, or from one format to another. A file's folder
# decides its layer. The public headers share a folder, so one that declares a report is in the layer that implements
# it.
#
#   check_layers.sh SOURCES
set -euo pipefail

cd "$1"

# FILE:LINE:#include "PATH"; public headers keep their folder in PATH.
includes() {
  grep -rnE --include='*.h' --include='*.h.in' --include='*.cpp' '^[[:space:]]*#[[:space:]]*include[[:space:]]*["<]' \
    src include apps
}

# A folder with more files than this should be divided.
most_files=24
crowded="$(find src include apps -type f | sed 's|/[^/]*$||' | sort | uniq -c | awk -v most="$most_files" '$1 > most')"
if [ -n "$crowded" ]; then
  printf 'check_layers: more than %s files in a folder:\n%s\n' "$most_files" "$crowded"
  exit 1
fi

includes | awk '
  # Sets the layer and the format of an included path. Layer 0: a file of the command or of another library.
  function place(path) {
    layer = 0
    format = ""
    if (path ~ /^text\//) layer = 1
    else if (path ~ /^system\//) layer = 2
    else if (path ~ /^output\//) layer = 3
    else if (path ~ /^(report|document)\//) {
      layer = 4
      format = path
      sub(/\/.*$/, "", format)
    }
    else if (path ~ /^formats\/[^\/]*\//) {
      layer = 5
      format = path
      sub(/^formats\//, "", format)
      sub(/\/[^\/]*$/, "", format)
    }
    else if (path ~ /^formats\//) layer = 6
    else if (path ~ /^api\//) layer = 7
    else if (path ~ /^scrivalen\/(export|host|output_file|text|version)\.h/) layer = 3
    else if (path ~ /^scrivalen\/report\.h/) { layer = 4; format = "report" }
    else if (path ~ /^scrivalen\/html_report\.h/) { layer = 5; format = "markup" }
    else if (path ~ /^scrivalen\/rtf_doc\.h/) { layer = 5; format = "rtf" }
    else if (path ~ /^scrivalen\/pdf_doc\.h/) { layer = 5; format = "pdf/objects" }  # it also names the faces
    else if (path ~ /^scrivalen\/(document|scrivalen)\.h/) layer = 7
    else if (path ~ /^scrivalen\//) layer = 6
  }

  # Help holds an HTML report, and help documents consist of pages of HTML documents. The HTML of documents knows what it
  # shares with their XML. The layout of a PDF file knows its fonts, and both its objects.
  # The parts of an RTF document know each other, and so do those of a Word document, of a typeset PDF document and of a
  # workbook, which shares its style sheets with the spreadsheet report. Both know how a workbook is written.
  function mayKnow(from, to) {
    return from == to || (from ~ /^rtf\/document/ && to ~ /^rtf\/document/) ||
      (from ~ /^docx/ && to ~ /^docx/) || (from ~ /^xlsx\/document/ && to ~ /^xlsx/) ||
      (from == "xlsx" && to == "xlsx/workbook") ||
      (from ~ /^pdf\/typeset/ && to ~ /^pdf\/typeset/) || (from == "help" && to == "markup") ||
      (from == "help/document" && to ~ /^(help|markup\/html)$/) || (from == "markup/html" && to == "markup") ||
      (from == "pdf/layout" && to == "pdf/fonts") || (from ~ /^pdf\/(layout|fonts)$/ && to == "pdf/objects")
  }

  # The command knows the interface, and below it only the layers without reports. The ids in a table of contents must
  # be those that documents make.
  function commandMayKnow(path) {
    return path ~ /^scrivalen\// || layer <= 3 || path == "document/anchor_names.h"
  }

  function wrong(why) {
    printf "check_layers: %s:%s: %s\n", file, line, why
    status = 1
  }

  {
    split($0, fields, ":")
    file = fields[1]
    line = fields[2]
    path = $0
    sub(/^[^"<]*["<]/, "", path)
    sub(/[">].*$/, "", path)
    checked++
    if (file ~ /^apps\//) {
      place(path)
      if (!commandMayKnow(path)) wrong("the command includes " path)
      next
    }
    place(substr(file, index(file, "/") + 1))
    ownLayer = layer
    ownFormat = format
    if (ownLayer == 0) wrong("the folder of this file is in no layer")
    place(path)
    if (layer == 0 && $0 ~ /include[[:space:]]*"/) wrong(path " is in no layer")
    else if (layer > ownLayer) wrong(path " is above this file")
    else if (layer == 4 && ownLayer == 4 && format != ownFormat) wrong(path " is beside this file, not below it")
    else if (layer == 5 && ownLayer == 5 && !mayKnow(ownFormat, format)) wrong(path " belongs to another format")
  }

  END {
    if (checked < 3) wrong("there are no includes to check")
    exit status
  }'
