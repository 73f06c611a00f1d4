#!/usr/bin/env bash
# Has a program write archives, and other programs read them.
#
#   check_zip.sh PROGRAM...
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

program=("$@")

# check ENTRIES: the archive has as many more than the four of every kind.
check() {
  "${program[@]}" "$1" 0 "$work/archive.zip" || fail "the program failed"
  test_archives "$work/archive.zip"
  /usr/bin/python3 - "$1" "$work/archive.zip" <<'PYTHON' || fail "Python does not find what was written"
import sys
import zipfile

archive = zipfile.ZipFile(sys.argv[2])
names = ["first.txt", "folder/stream.txt", "empty", "ä€.bin"] + ["many/%d" % i for i in range(int(sys.argv[1]))]
assert archive.namelist() == names
assert archive.read("first.txt") == b"the first\n"
assert archive.read("folder/stream.txt") == b"".join(b"%d\n" % i for i in range(1000000))
assert archive.read("empty") == b""
assert archive.read("ä€.bin") == b"\0\1\2"
assert {entry.date_time for entry in archive.infolist()} == {(2024, 11, 29, 12, 0, 0)}
PYTHON
}

# The last entries are beyond 4 GiB. The zeros before them are a hole in the file, and are not read.
check_beyond_4_gib() {
  local archive="$work/large.zip"
  "${program[@]}" 0 65 "$archive" || fail "the program failed"
  [ "$(stat -c %s "$archive")" -gt $((65 << 26)) ] || fail "the large archive has no 4 GiB"
  unzip -tqq "$archive" last.txt last/stream.txt >&2 || fail "unzip finds the last entries broken"
  7z t "$archive" last.txt last/stream.txt >"$work/7z.log" 2>&1 ||
    fail "7-Zip finds the last entries broken: $(cat "$work/7z.log")"
  expect_equal "what 7-Zip tests" 2 "$(sed -n 's/^Files: //p' "$work/7z.log")"
  expect_equal "what unzip reads" "the last" "$(unzip -p "$archive" last.txt)"
  /usr/bin/python3 - "$archive" <<'PYTHON' || fail "Python does not find the last entries"
import sys
import zipfile

archive = zipfile.ZipFile(sys.argv[1])
assert len(archive.namelist()) == 4 + 65 + 2
assert archive.getinfo("last.txt").header_offset > 1 << 32
assert archive.read("last.txt") == b"the last\n"
assert archive.read("last/stream.txt") == b"streamed\n"
assert archive.read("first.txt") == b"the first\n"
PYTHON
}

check 0
check 70000
check_beyond_4_gib
