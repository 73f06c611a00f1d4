#!/usr/bin/env bash
# Reads every #include of the sources and fails on one that goes upward, or from one format to another. A file's folder
# decides its floor. The public headers share a folder, so one that declares a report is on the floor that implements
# it.
#
#   check_floors.sh SOURCES
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
  printf 'check_floors: more than %s files in a folder:\n%s\n' "$most_files" "$crowded"
  exit 1
fi

includes | awk '
  # Sets the floor and the format of an included path. Floor 0: a file of the command or of another library.
  function place(path) {
    floor = 0
    format = ""
    if (path ~ /^text\//) floor = 1
    else if (path ~ /^system\//) floor = 2
    else if (path ~ /^output\//) floor = 3
    else if (path ~ /^report\//) floor = 4
    else if (path ~ /^formats\/[^\/]*\//) {
      floor = 5
      format = path
      sub(/^formats\//, "", format)
      sub(/\/[^\/]*$/, "", format)
    }
    else if (path ~ /^formats\//) floor = 6
    else if (path ~ /^scrivalen\/(export|host|output_file|text|version)\.h/) floor = 3
    else if (path ~ /^scrivalen\/report\.h/) floor = 4
    else if (path ~ /^scrivalen\/html_report\.h/) { floor = 5; format = "markup" }
    else if (path ~ /^scrivalen\/rtf_doc\.h/) { floor = 5; format = "rtf" }
    else if (path ~ /^scrivalen\/pdf_doc\.h/) { floor = 5; format = "pdf/objects" }  # it also names the faces
    else if (path ~ /^scrivalen\//) floor = 6
  }

  # Help holds an HTML report. The layout of a PDF file knows its fonts, and both its objects.
  function mayKnow(from, to) {
    return from == to || (from == "help" && to == "markup") || (from == "pdf/layout" && to == "pdf/fonts") ||
      (from ~ /^pdf\/(layout|fonts)$/ && to == "pdf/objects")
  }

  # The command knows the interface, and below it only the floors without reports.
  function commandMayKnow(path) {
    return path ~ /^scrivalen\// || floor <= 3
  }

  function wrong(why) {
    printf "check_floors: %s:%s: %s\n", file, line, why
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
    ownFloor = floor
    ownFormat = format
    if (ownFloor == 0) wrong("the folder of this file is on no floor")
    place(path)
    if (floor == 0 && $0 ~ /include[[:space:]]*"/) wrong(path " is on no floor")
    else if (floor > ownFloor) wrong(path " is above this file")
    else if (floor == 5 && ownFloor == 5 && !mayKnow(ownFormat, format)) wrong(path " belongs to another format")
  }

  END {
    if (checked < 3) wrong("there are no includes to check")
    exit status
  }'
