#!/usr/bin/env bash
# Compares whole processes in turn, so that changes in the machine's speed affect both sides, and prints medians beside
# the limits. Exits with 1 when a limit is exceeded.
#
#   bench/compare.sh             everything below; Markdown and CSV only if the command exists
#   bench/compare.sh ledger      the library against handwritten writers, scaling, memory
#   bench/compare.sh pdf         PDF against libharu
#   bench/compare.sh xlsx        spreadsheets against libxlsxwriter
#   bench/compare.sh document    the document interface against handwritten writers, scaling, memory
#   bench/compare.sh typeset     the PDF of documents against libharu, cairo, pango and programs that set pages
#   bench/compare.sh python      Python against C++, both writing a document from columns
#   bench/compare.sh markdown    the command against cmark
#   bench/compare.sh csv         the command against a program for the one table, scaling, memory
#
# The last two also compare with one run of pandoc, where it is on the path: Markdown with a text of 100 KB.
#
# BUILD is the build folder (build/linux), RUNS the number of runs per side (11), TMPDIR the folder of the files.
# shellcheck disable=SC2317  # the measured functions are called by name
set -euo pipefail
shopt -s inherit_errexit
export LC_ALL=C

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${BUILD:-$root/build/linux}"
runs="${RUNS:-11}"
ledger="$build/bin/scrivalen_ledger"
document="$build/bin/scrivalen_document_ledger"
columns="$build/bin/scrivalen_columns"
command="$build/bin/scrivalen"
csv_by_hand="$build/bin/scrivalen_csv_by_hand"
peers="$build/bin/scrivalen_pdf_peers"
work="$(mktemp -d "${TMPDIR:-/tmp}/compare.XXXXXX")"
trap 'rm -rf "$work"' EXIT
over=0
seconds=0
other=0
ratio=0

fail() {
  printf 'compare: %s\n' "$*" >&2
  exit 1
}

# The median of each column of the input.
medians() {
  local columns column file="$work/columns"
  cat >"$file"
  columns="$(awk 'NR == 1 {print NF}' "$file")"
  for ((column = 1; column <= columns; ++column)); do
    awk -v column="$column" '{print $column}' "$file" | sort -g |
      awk '{value[NR] = $1} END {print (value[int((NR + 1) / 2)] + value[int(NR / 2) + 1]) / 2}'
  done | paste -s -d ' '
}

head_line() {
  printf '\n%-36s %12s %12s %8s %8s\n' "$@"
}

# verdict LABEL A B RATIO LIMIT
verdict() {
  local word=ok
  awk -v ratio="$4" -v limit="$5" 'BEGIN {exit !(ratio <= limit)}' || word=OVER
  [ "$word" = ok ] || over=1
  printf '%-36s %12s %12s %8.3f %8s  %s\n' "$1" "$2" "$3" "$4" "$5" "$word"
}

# cpu FORMAT WRITER ROWS [FILE]: the cpu seconds of a process that writes the ledger. The files are new each time, so
# that no process pays for truncating another's.
cpu() {
  run_ledger "$@" | cut -d ' ' -f 1
}

run_ledger() {
  rm -f "$work"/ledger*
  "$ledger" "$1" "$2" "$3" "${4:-$work/ledger}"
}

require_same_bytes() {
  local format=$1 writer=$2
  "$ledger" "$format" "$writer" 1000 "$work/a" >/dev/null
  "$ledger" "$format" handwritten 1000 "$work/b" >/dev/null
  cmp "$work/a" "$work/b" >&2 || fail "$format: the two writers write different bytes, so there is nothing to compare"
}

# pairs A B: runs two functions that print seconds in turn. Sets seconds, other and ratio to the medians of both and of
# their ratio.
pairs() {
  local run a b
  for ((run = 0; run < runs; ++run)); do
    a="$($1)"
    b="$($2)"
    awk -v a="$a" -v b="$b" 'BEGIN {printf "%.6f %.6f %.6f\n", a, b, a / b}'
  done >"$work/pairs"
  read -r seconds other ratio < <(medians <"$work/pairs")
}

against_handwritten() {
  local format=$1 writer=$2 limit=$3
  require_same_bytes "$format" "$writer"
  pairs "cpu $format $writer 100000" "cpu $format handwritten 100000"
  verdict "$format, $writer" "$seconds" "$other" "$ratio" "$limit"
}

# The passes leave three files, like the single pass.
three_passes() {
  local format
  rm -f "$work"/ledger*
  for format in text html xml; do
    "$ledger" "$format" common 100000 "$work/ledger.$format"
  done | awk '{sum += $1} END {print sum}'
}

at_once() {
  pairs "cpu all common 100000" three_passes
  verdict "three formats" "$seconds" "$other" "$ratio" 0.80
}

# row_cost FORMAT WRITER ROWS [FILE]: the cpu microseconds per row.
row_cost() {
  cpu "$@" | awk -v rows="$3" '{printf "%.6f\n", $1 / rows * 1e6}'
}

# scaling FORMAT WRITER [FILE]
scaling() {
  local format=$1 writer=$2 file=${3:-}
  pairs "row_cost $format $writer 1000000 $file" "row_cost $format $writer 100000 $file"
  verdict "$format, $writer${file:+, $file}" "$seconds" "$other" "$ratio" 1.05
}

# A process inherits the peak of its parent, here a small shell, whose peak is below the values measured.
peak() {
  local run
  for ((run = 0; run < 5; ++run)); do
    run_ledger "$1" "$2" "$3" | cut -d ' ' -f 2
  done | medians
}

memory() {
  local format=$1 writer=$2 large small more
  large="$(peak "$format" "$writer" 1000000)"
  small="$(peak "$format" "$writer" 1000)"
  more="$(awk -v large="$large" -v small="$small" 'BEGIN {print (large - small) / 1024}')"
  verdict "$format, $writer" "$large" "$small" "$more" 1
}

# against_haru ROWS LIMIT [FILE]
against_haru() {
  local rows=$1 limit=$2 file=${3:-}
  pairs "cpu pdf library $rows $file" "cpu pdf haru $rows $file"
  verdict "table of $rows rows${file:+, $file}" "$seconds" "$other" "$ratio" "$limit"
}

wall() {
  local begin end
  rm -f "$work"/ledger*
  begin=${EPOCHREALTIME/./}
  "$ledger" pdf "$1" 1000 "$work/ledger" >/dev/null
  end=${EPOCHREALTIME/./}
  awk -v microseconds=$((end - begin)) 'BEGIN {printf "%.6f\n", microseconds / 1e6}'
}

peak_against_haru() {
  local rows=$1 own other
  own="$(peak pdf library "$rows")"
  other="$(peak pdf haru "$rows")"
  verdict "table of $rows rows" "$own" "$other" "$(awk -v a="$own" -v b="$other" 'BEGIN {print a / b}')" 1
}

compare_pdf() {
  head_line "cpu seconds, PDF" library libharu ratio limit
  against_haru 10000 0.33
  against_haru 100000 0.33
  # A million rows are a gigabyte; see compare_ledger.
  against_haru 1000000 0.25 /dev/null
  pairs "cpu prose library 1000" "cpu prose haru 1000"
  verdict "1,000 sections of prose" "$seconds" "$other" "$ratio" 0.40
  head_line "wall seconds, PDF" library libharu ratio limit
  pairs "wall library" "wall haru"
  verdict "table of 1000 rows" "$seconds" "$other" "$ratio" 0.50
  head_line "cpu microseconds a row, PDF" "1,000,000" "10,000" ratio limit
  pairs "row_cost pdf library 1000000 /dev/null" "row_cost pdf library 10000 /dev/null"
  verdict "table, /dev/null" "$seconds" "$other" "$ratio" 1.15
  head_line "peak memory, KiB, PDF" library libharu ratio limit
  peak_against_haru 100000
  peak_against_haru 1000000
}

# peak_over_xlsxwriter ROWS: the MiB that the library needs beyond libxlsxwriter.
peak_over_xlsxwriter() {
  local rows=$1 own other
  own="$(peak xlsx library "$rows")"
  other="$(peak xlsx xlsxwriter "$rows")"
  verdict "table of $rows rows" "$own" "$other" "$(awk -v a="$own" -v b="$other" 'BEGIN {print (a - b) / 1024}')" 2
}

# The files of both writers, in bytes.
document_size() {
  local own other
  write_document xlsx cells 100000 >/dev/null
  run_ledger xlsx xlsxwriter 100000 "$work/ledger" >/dev/null
  own="$(stat -c %s "$work/document")"
  other="$(stat -c %s "$work/ledger")"
  verdict "table of 100000 rows" "$own" "$other" "$(awk -v a="$own" -v b="$other" 'BEGIN {print a / b}')" 1.15
}

compare_xlsx_documents() {
  local writer
  head_line "cpu seconds, xlsx document" library libxlsxwriter ratio limit
  pairs "document_cpu xlsx cells 100000" "cpu xlsx xlsxwriter 100000"
  verdict "table of 100000 rows" "$seconds" "$other" "$ratio" 0.35
  head_line "cpu seconds, 100,000 rows" typed texts ratio limit
  pairs "document_cpu xlsx typed 100000" "document_cpu xlsx cells 100000"
  verdict "xlsx document" "$seconds" "$other" "$ratio" 1.00
  head_line "bytes, xlsx document" library libxlsxwriter ratio limit
  document_size
  for writer in cells report; do
    head_line "peak memory, KiB, xlsx $writer" "1,000,000" "1,000" "MiB more" limit
    document_memory xlsx "$writer" 8192
  done
}

compare_xlsx() {
  head_line "cpu seconds, xlsx" library libxlsxwriter ratio limit
  pairs "cpu xlsx library 10000" "cpu xlsx xlsxwriter 10000"
  verdict "table of 10000 rows" "$seconds" "$other" "$ratio" 0.35
  pairs "cpu xlsx library 100000" "cpu xlsx xlsxwriter 100000"
  verdict "table of 100000 rows" "$seconds" "$other" "$ratio" 0.35
  head_line "peak memory, KiB, xlsx" library libxlsxwriter "MiB more" limit
  peak_over_xlsxwriter 10000
  peak_over_xlsxwriter 100000
  compare_xlsx_documents
}

compare_ledger() {
  [ -x "$ledger" ] || fail "there is no $ledger; build the benchmarks first"
  head_line "cpu seconds, 100,000 rows" library handwritten ratio limit
  against_handwritten text library 0.90
  against_handwritten html library 0.75
  against_handwritten xml library 0.75
  against_handwritten rtf library 0.90
  against_handwritten rtf document 0.90
  head_line "cpu seconds, 100,000 rows" "one pass" "three passes" ratio limit
  at_once
  head_line "cpu microseconds a row" "1,000,000" "100,000" ratio limit
  scaling text library
  scaling html library
  scaling xml library
  # A million rows of RTF are 1.1 GB. The cost of the system's cache for a file of that size doubles from one run to the
  # next, with any writer, and would hide the growth of the writer's own cost.
  scaling rtf library /dev/null
  scaling rtf document /dev/null
  head_line "peak memory, KiB" "1,000,000" "1,000" "MiB more" limit
  memory text library
  memory html library
  memory xml library
  memory rtf library
  memory rtf document
  memory all common
}

# write_document FORMAT WRITER ROWS: prints the cpu seconds and the peak memory in KiB of the process.
write_document() {
  rm -f "$work"/document*
  "$document" "$1" "$2" "$3" "$work/document"
}

document_cpu() {
  write_document "$@" | cut -d ' ' -f 1
}

document_peak() {
  local run
  for ((run = 0; run < 5; ++run)); do
    write_document "$@" | cut -d ' ' -f 2
  done | medians
}

require_same_document() {
  local format=$1 writer
  for writer in cells rows handwritten; do
    "$document" "$format" "$writer" 1000 "$work/$writer" >/dev/null
    cmp "$work/$writer" "$work/cells" >&2 || fail "$format: $writer makes another document, so there is nothing to compare"
  done
}

document_formats_at_once=html,xml,rtf

one_format_after_another() {
  local format
  for format in ${document_formats_at_once//,/ }; do
    document_cpu "$format" cells 100000
  done | awk '{sum += $1} END {print sum}'
}

# document_memory FORMAT WRITER [KIB]: the growth from 1,000 rows to 1,000,000, and the peak if it has a limit.
document_memory() {
  local large small
  large="$(document_peak "$1" "$2" 1000000)"
  small="$(document_peak "$1" "$2" 1000)"
  verdict "$1, $2" "$large" "$small" "$(awk -v a="$large" -v b="$small" 'BEGIN {print (a - b) / 1024}')" 1
  [ -z "${3:-}" ] || one_of "$1, $2, 1,000,000 rows" "$large" "$3"
}

# in_a_process FORMAT CONTENT: the wall microseconds of a small document in a process that writes many of them.
in_a_process() {
  "$document" "$1" "$2" 2000 "$work/small" | cut -d ' ' -f 1
}

compare_document() {
  local format
  [ -x "$document" ] || fail "there is no $document; build the benchmarks first"
  for format in text html xml rtf; do
    require_same_document "$format"
  done
  head_line "cpu seconds, 100,000 rows" library handwritten ratio limit
  for format in html xml rtf; do
    pairs "document_cpu $format rows 100000" "document_cpu $format handwritten 100000"
    verdict "$format, rows" "$seconds" "$other" "$ratio" 0.60
    pairs "document_cpu $format cells 100000" "document_cpu $format handwritten 100000"
    verdict "$format, cells" "$seconds" "$other" "$ratio" 0.75
  done
  pairs "document_cpu text cells 100000" "document_cpu text handwritten 100000"
  verdict "text, cells" "$seconds" "$other" "$ratio" 1.20
  head_line "cpu seconds, 100,000 rows" typed texts ratio limit
  for format in text html xml rtf; do
    pairs "document_cpu $format typed 100000" "document_cpu $format cells 100000"
    verdict "$format" "$seconds" "$other" "$ratio" 1.20
  done
  head_line "cpu seconds, 100,000 rows" "one pass" "by format" ratio limit
  pairs "document_cpu $document_formats_at_once cells 100000" one_format_after_another
  verdict "three formats" "$seconds" "$other" "$ratio" 0.80
  head_line "peak memory, KiB" "1,000,000" "1,000" "MiB more" limit
  document_memory html rows
  for format in text html xml rtf markdown docx; do
    document_memory "$format" cells
  done
  head_line "wall microseconds" document "" document limit
  one_of "empty html" "$(in_a_process html empty)" 100
  for format in docx xlsx; do
    one_of "a page of prose, $format" "$(in_a_process "$format" page)" 2000
  done
}

# The cpu seconds and peak memory of a process that writes a PDF with another library.
write_with_peer() {
  rm -f "$work"/peer*
  "$peers" "$1" "$2" "$3" "$work/peer.pdf"
}

peer_cpu() {
  write_with_peer "$@" | cut -d ' ' -f 1
}

# wall_of COMMAND...: the wall seconds of a command.
wall_of() {
  local begin end
  begin=${EPOCHREALTIME/./}
  "$@" >/dev/null 2>"$work/errors" || return
  end=${EPOCHREALTIME/./}
  awk -v microseconds=$((end - begin)) 'BEGIN {printf "%.6f\n", microseconds / 1e6}'
}

# one_of LABEL VALUE LIMIT: a figure that nothing is compared with.
one_of() {
  verdict "$1" "$2" "" "$2" "$3"
}

pages_of() {
  pdfinfo "$1" | awk '$1 == "Pages:" {print $2}'
}

# bytes_a_cell FILE ROWS
bytes_a_cell() {
  awk -v bytes="$(stat -c %s "$1")" -v cells=$(($2 * 6)) 'BEGIN {printf "%.3f\n", bytes / cells}'
}

compare_bytes() {
  local rows=100000 own other
  write_document pdf cells "$rows" >/dev/null
  write_with_peer ledger haru "$rows" >/dev/null
  own="$(bytes_a_cell "$work/document" "$rows")"
  other="$(bytes_a_cell "$work/peer.pdf" "$rows")"
  verdict "table of $rows rows" "$own" "$other" "$(awk -v a="$own" -v b="$other" 'BEGIN {print a / b}')" 0.85
}

# A heading, an address, a few paragraphs and a list.
make_letter() {
  printf '# Order 2024-17\n\nHarbour Printers, 5 Mole Street, Port Ellis\n\nDear Ms Hopkins,\n\n'
  for _ in 1 2 3 4; do
    printf 'thank you for your offer of **14 March**. We would like to order the items below, to be delivered to our '
    printf 'branch in the *north* by the end of the month; please see https://example.org/orders for the details.\n\n'
  done
  printf -- '- 40 boxes of paper\n- 12 bottles of ink\n\nYours sincerely,\n\nKarl Lindgren\n'
}

set_letter() {
  wall_of "$command" --quiet "$work/letter.md" -o "$work/letter.$1"
}

# make_tbl ROWS: the ledger for groff.
make_tbl() {
  printf '.TS\nr l l r l l.\n'
  "$document" text cells "$1" "$work/ledger.txt" >/dev/null
  tail -n +4 "$work/ledger.txt" | sed 's/^ *//; s/   */\t/g'
  printf '.TE\n'
}

# Each sets the ledger of 10,000 rows, from the form that suits it. Only the fastest matters, so a program that takes
# more than 20 seconds counts with these.
wall_in_limit() {
  local status=0
  wall_of timeout -k 1 20 "$@" || status=$?
  [ "$status" = 0 ] || echo 20
}

set_with_libreoffice() {
  wall_in_limit soffice "-env:UserInstallation=file://$work/office" --headless --convert-to pdf --outdir "$work" \
    "$work/ledger.html"
}

set_with_chromium() {
  wall_in_limit chromium --headless --no-sandbox --disable-gpu "--user-data-dir=$work/chromium" \
    "--print-to-pdf=$work/chromium.pdf" "file://$work/ledger.html"
}

set_with_weasyprint() {
  wall_in_limit weasyprint --quiet "$work/ledger.html" "$work/weasyprint.pdf"
}

set_with_groff() {
  wall_in_limit groff -t -Tpdf -P-pa4 "$work/ledger.tbl"
}

# The compiler of Typst is where scripts/pdf_scripts.py installs it.
typst_folder="$root/build/scripts"
typst_program="
  import {NodeCompiler} from '@myriaddreamin/typst-ts-node-compiler';
  import {writeFileSync} from 'node:fs';
  const [folder] = process.argv.slice(1);
  const compiler = NodeCompiler.create({workspace: folder});
  writeFileSync(folder + '/typst.pdf', Buffer.from(compiler.pdf({mainFilePath: folder + '/ledger.typ'})));"

# make_typ: the ledger for Typst, of the same rows as for groff.
make_typ() {
  sed '1,2d;$d' "$work/ledger.tbl" >"$work/ledger.tsv"
  printf '#set page(paper: "a4")\n'
  printf '#table(columns: 6, align: (right, left, left, right, left, left), ..csv("ledger.tsv", delimiter: "\\t").flatten())\n'
}

set_with_typst() {
  wall_in_limit env -C "$typst_folder" node --input-type=module -e "$typst_program" -- "$work"
}

set_document() {
  wall_of "$document" pdf cells 10000 "$work/document"
}

# Prints a line for each program that is there, and compares with the fastest.
compare_programs() {
  local program name taken fastest="" least="" own programs=()
  "$document" html cells 10000 "$work/ledger.html" >/dev/null
  make_tbl 10000 >"$work/ledger.tbl"
  make_typ >"$work/ledger.typ"
  for program in groff:groff chromium:chromium soffice:libreoffice weasyprint:weasyprint; do
    [ -z "$(type -P "${program%%:*}")" ] || programs+=("${program#*:}")
  done
  [ ! -d "$typst_folder/node_modules/@myriaddreamin" ] || programs+=(typst)
  for name in "${programs[@]}"; do
    taken="$("set_with_$name")"
    own="$(set_document)"
    verdict "10,000 rows, $name" "$own" "$taken" "$(awk -v a="$own" -v b="$taken" 'BEGIN {print a / b}')" 0.10
    if [ -z "$least" ] || awk -v a="$taken" -v b="$least" 'BEGIN {exit !(a < b)}'; then
      least="$taken"
      fastest="$name"
    fi
  done
  [ -n "$fastest" ] || return 0
  pairs set_document "set_with_$fastest"
  verdict "10,000 rows, the fastest: $fastest" "$seconds" "$other" "$ratio" 0.10
}

compare_typeset() {
  [ -x "$document" ] || fail "there is no $document; build the benchmarks first"
  [ -x "$peers" ] || fail "there is no $peers; install libpango1.0-dev and build the benchmarks"
  head_line "cpu seconds, 100,000 rows, PDF" library other ratio limit
  pairs "document_cpu pdf cells 100000" "peer_cpu ledger haru 100000"
  verdict "libharu, COMP_ALL" "$seconds" "$other" "$ratio" 0.20
  pairs "document_cpu pdf cells 100000" "peer_cpu ledger cairo 100000"
  verdict "cairo" "$seconds" "$other" "$ratio" 0.03
  pairs "document_cpu pdf letters 100000" "document_cpu pdf latin 100000"
  verdict "Cyrillic and Greek / Latin" "$seconds" "$other" "$ratio" 1.15
  head_line "100,000 rows, PDF" tagged plain ratio limit
  pairs "document_cpu pdf tagged 100000" "document_cpu pdf cells 100000"
  verdict "cpu seconds" "$seconds" "$other" "$ratio" 3.0
  write_document pdf tagged 100000 >/dev/null
  one_of "bytes a cell" "$(bytes_a_cell "$work/document" 100000)" 45
  head_line "cpu seconds, 1,000 paragraphs" library pango ratio limit
  pairs "peer_cpu prose library 1000" "peer_cpu prose pango 1000"
  verdict "Arabic and Devanagari" "$seconds" "$other" "$ratio" 0.50
  head_line "bytes a cell, PDF" library libharu ratio limit
  compare_bytes
  head_line "peak memory, MiB" library "" MiB limit
  one_of "1,000,000 rows" "$(document_peak pdf cells 1000000 | awk '{printf "%.1f", $1 / 1024}')" 20
  one_of "1,000,000 rows, tagged" "$(document_peak pdf tagged 1000000 | awk '{printf "%.1f", $1 / 1024}')" 20
  write_document pdf cells 2000 >/dev/null
  if [ -n "$(type -P pdfinfo)" ]; then
    head_line "pages" library "" pages limit
    one_of "2,000 rows" "$(pages_of "$work/document")" 37
  fi
  head_line "wall seconds" library other ratio limit
  compare_programs
  [ -x "$command" ] || return 0
  make_letter >"$work/letter.md"
  head_line "wall milliseconds, a letter" PDF HTML ratio ""
  pairs "set_letter pdf" "set_letter html"
  printf '%-36s %12.2f %12.2f %8.3f\n' "whole process" "${seconds}e3" "${other}e3" "$ratio"
  head_line "a letter of one page" library "" "" limit
  one_of "KiB" "$(stat -c %s "$work/letter.pdf" | awk '{printf "%.1f", $1 / 1024}')" 29.3
  one_of "wall milliseconds, in a process" \
    "$("$document" pdf letter 200 "$work/letter" | awk '{printf "%.2f", $1 / 1000}')" 5
}

# columns_in_cpp FORMAT ROWS, columns_in_python FORMAT: the cpu seconds from the columns to the closed document, without
# the start of the process.
columns_in_cpp() {
  rm -f "$work/columns.cpp"
  "$columns" "$1" "$2" "$work/columns.cpp"
}

columns_in_python() {
  rm -f "$work/columns.python"
  SCRIVALEN_LIBRARY="$build/bin/libscrivalen.so" PYTHONPATH="$root/python" PYTHONDONTWRITEBYTECODE=1 \
    "${PYTHON:-/usr/bin/python3}" "$root/bench/document_columns.py" "$1" "$work/stored" "$work/columns.python"
}

require_same_columns() {
  columns_in_cpp "$1" "$2" >/dev/null
  columns_in_python "$1" >/dev/null
  cmp "$work"/columns.* >&2 || fail "$1: Python makes another document, so there is nothing to compare"
}

compare_python() {
  local format rows=1000000
  [ -x "$columns" ] || fail "there is no $columns; build the benchmarks first"
  mkdir "$work/stored"
  "$columns" --store "$rows" "$work/stored"
  head_line "cpu seconds, 1,000,000 rows, columns" Python C++ ratio limit
  for format in html text; do
    require_same_columns "$format" "$rows"
    pairs "columns_in_python $format" "columns_in_cpp $format $rows"
    verdict "$format" "$seconds" "$other" "$ratio" 1.10
  done
}

# make_markdown BYTES: text that both programs support, so CommonMark without tables and raw markup.
make_markdown() {
  awk -v wanted="$1" 'BEGIN {
    for (section = 1; size < wanted; ++section) {
      text = sprintf("## Section %d: goods & services\n\n" \
        "In week %d the *northern* branch sold **%d boxes** of paper; see [the list](https://example.org/list/%d)\n" \
        "and the note on `order_%d` for what is < 5 kg. Nothing \"urgent\" is left open,\n" \
        "so the account was closed on the %dth day.\n\n" \
        "- first item of section %d\n- second item, with *stress*\n  - an inner item\n- third item\n\n" \
        "1. count\n2. check\n3. sign\n\n" \
        "> A quotation of two lines\n> in section %d.\n\n" \
        "    indented code = %d * 2;\n\n```\nfenced code, a < b && b > c\n```\n\n---\n\n",
        section, section % 52, section % 977, section, section % 31, section % 28, section, section, section)
      printf "%s", text
      size += length(text)
    }
  }'
}

# The user and system seconds of a command, as the shell counts them.
seconds_of() {
  local TIMEFORMAT='%U %S'
  { time "$@" >/dev/null 2>"$work/errors"; } 2>&1 | awk '{print $1 + $2}'
}

run_command() {
  rm -f "$work/command.html"
  seconds_of "$command" --quiet "$work/input.md" -o "$work/command.html"
}

run_cmark() {
  rm -f "$work/cmark.html"
  # shellcheck disable=SC2016  # the inner shell expands these
  seconds_of bash -c 'exec cmark "$1" >"$2"' cmark "$work/input.md" "$work/cmark.html"
}

# against_pandoc INPUT LIMIT [FORMAT]: one run of each, as pandoc takes far longer than any other work could hide.
against_pandoc() {
  local format=${3:-html} own its
  own="$(seconds_of "$command" --quiet "$1" -o "$work/command.$format")"
  its="$(seconds_of pandoc -s "$1" -o "$work/pandoc.$format")"
  head_line "cpu seconds, $format" scrivalen pandoc ratio limit
  verdict "$(basename "$1")" "$own" "$its" "$(awk -v a="$own" -v b="$its" 'BEGIN {print a / b}')" "$2"
}

compare_markdown() {
  [ -x "$command" ] || fail "there is no $command; build the command first"
  [ -n "$(type -P cmark)" ] || fail "there is no cmark on the path"
  make_markdown 10000000 >"$work/input.md"
  "$command" --quiet "$work/input.md" -o "$work/command.html" || fail "the command failed"
  cmark "$work/input.md" >"$work/cmark.html" || fail "cmark failed"
  head_line "cpu seconds, 10 MB Markdown to HTML" scrivalen cmark ratio limit
  pairs run_command run_cmark
  verdict "html" "$seconds" "$other" "$ratio" 0.50
  if [ -n "$(type -P pandoc)" ]; then
    make_markdown 100000 >"$work/short.md"
    against_pandoc "$work/short.md" 0.01
  fi
}

# make_csv ROWS: numbers, dates, texts with letters outside ASCII, a third of them in quotes.
make_csv() {
  awk -v rows="$1" 'BEGIN {
    print "id,name,remark,amount,date,status"
    for (row = 1; row <= rows; ++row) {
      printf "%d,%s,%s,%.2f,2024-%02d-%02d,%s\n", row, row % 3 ? "John Smith" : "Ren\303\251e M\303\274ller",
        row % 3 ? "a remark of some forty characters a < b &" : "\"a remark, of \"\"forty\"\" characters, in quotes\"",
        row * 7919 % 999983 / 100, row % 12 + 1, row % 28 + 1, row % 2 ? "open" : "closed"
    }
  }'
}

csv_by_command() {
  rm -f "$work/command.html"
  seconds_of "$command" --quiet "$work/$1.csv" -o "$work/command.html"
}

csv_by_hand() {
  rm -f "$work/hand.html"
  seconds_of "$csv_by_hand" "$work/$1.csv" "$work/page.html" "$work/hand.html"
}

# The cpu microseconds a row and the peak memory in KiB for a number of rows.
csv_row_cost() {
  csv_by_command "$1" | awk -v rows="$1" '{printf "%.6f\n", $1 / rows * 1e6}'
}

csv_peak() {
  local run
  for ((run = 0; run < 5; ++run)); do
    command time -f %M -o "$work/peak" "$command" --quiet "$work/$1.csv" -o "$work/command.html"
    cat "$work/peak"
  done | medians
}

compare_csv() {
  local rows large small
  [ -x "$command" ] || fail "there is no $command; build the command first"
  [ -x "$csv_by_hand" ] || fail "there is no $csv_by_hand; build the benchmarks first"
  for rows in 1000 100000 1000000; do
    make_csv "$rows" >"$work/$rows.csv"
  done
  mkdir "$work/short"
  cp "$work/1000.csv" "$work/short/100000.csv" # the page's title is the name of the file
  "$command" --quiet "$work/short/100000.csv" -o "$work/page.html" || fail "the command failed"
  csv_by_command 100000 >/dev/null
  csv_by_hand 100000 >/dev/null
  cmp "$work/command.html" "$work/hand.html" >&2 || fail "csv: the two pages differ, so there is nothing to compare"
  head_line "cpu seconds, 100,000 rows of CSV" scrivalen "by hand" ratio limit
  pairs "csv_by_command 100000" "csv_by_hand 100000"
  verdict "html" "$seconds" "$other" "$ratio" 1.60
  if [ -n "$(type -P pandoc)" ]; then
    against_pandoc "$work/100000.csv" 0.00666
    make_csv 10000 >"$work/10000.csv"
    against_pandoc "$work/10000.csv" 0.01 docx
  fi
  head_line "cpu microseconds a row of CSV" "1,000,000" "100,000" ratio limit
  pairs "csv_row_cost 1000000" "csv_row_cost 100000"
  verdict "html" "$seconds" "$other" "$ratio" 1.05
  head_line "peak memory, KiB" "1,000,000" "1,000" "MiB more" limit
  large="$(csv_peak 1000000)"
  small="$(csv_peak 1000)"
  verdict "html" "$large" "$small" "$(awk -v a="$large" -v b="$small" 'BEGIN {print (a - b) / 1024}')" 1
}

case "${1:-}" in
  ledger) compare_ledger ;;
  pdf) compare_pdf ;;
  xlsx) compare_xlsx ;;
  document) compare_document ;;
  typeset) compare_typeset ;;
  python) compare_python ;;
  markdown) compare_markdown ;;
  csv) compare_csv ;;
  "")
    compare_ledger
    compare_pdf
    compare_xlsx
    compare_document
    if [ -x "$peers" ]; then
      compare_typeset
    fi
    compare_python
    if [ -x "$command" ] && [ -n "$(type -P cmark)" ]; then
      compare_markdown
    fi
    if [ -x "$command" ]; then
      compare_csv
    fi
    ;;
  *) fail "unknown comparison '$1': ledger, pdf, xlsx, document, typeset, python, markdown, csv, or none for all" ;;
esac
exit "$over"
