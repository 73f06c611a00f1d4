#!/usr/bin/env bash
# Runs the help compiler on a disk with increasing room, from none to enough. Either it leaves a help file that holds
# every topic, or it exits with a status other than 0, reports the failure in one line and leaves nothing.
#
#   full_disk_help.sh COMPILER
# shellcheck source-path=SCRIPTDIR source=common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

compiler=$1

# In its own mount namespace any user may mount a small disk, and the mount ends with the script.
if [ -z "${SCRIVALEN_IN_NAMESPACE:-}" ]; then
  unshare -rm true 2>"$work/reason" ||
    fail "cannot mount a small disk, a mount namespace is refused: $(cat "$work/reason")"
  SCRIVALEN_IN_NAMESPACE=1 unshare -rm "$0" "$@"
  exit
fi

disk="$work/disk"
temporary="$work/temporary"
topics=8
rows=40
ending=.htm
failures=0
successes=0

write_project() {
  local i
  rm -rf "${disk:?}"/*
  {
    printf '[OPTIONS]\nCompiled file=report.chm\nContents file=report.hhc\nDefault topic=%s/1%s\n' "$disk" "$ending"
    printf 'Full-text search=Yes\nTitle=Topics\n[FILES]\n'
    for ((i = 1; i <= topics; i++)); do
      printf '%s/%d%s\n' "$disk" "$i" "$ending"
      make_table "$rows" | sed 's/^/<p>/' >"$disk/$i$ending"
    done
  } >"$disk/report.hhp"
  for ((i = 1; i <= topics; i++)); do
    printf '<param name="Local" value="%s/%d%s">\r\n' "$disk" "$i" "$ending"
  done >"$disk/report.hhc"
  printf 'an earlier report' >"$disk/report.chm"
}

# The files beside the project that the compiler must leave alone.
inputs() {
  (cd "$disk" && printf '%s\n' ballast report.hhc report.hhp ./*.htm | sed 's,^\./,,' | sort)
}

check_complete() {
  local i
  expect_equal "files with $1 KiB free" "$(printf '%s\n' "$(inputs)" report.chm | sort)" "$(ls -A "$disk")"
  rm -rf "$work/out"
  extract_chmLib "$disk/report.chm" "$work/out" >/dev/null 2>&1 || fail "the help file made with $1 KiB free cannot be opened"
  for ((i = 1; i <= topics; i++)); do
    cmp "$disk/$i$ending" "$work/out/$i$ending" || fail "the help file made with $1 KiB free does not hold its topics"
  done
}

check_nothing() {
  expect_equal "lines of messages with $1 KiB free" 1 "$(wc -l <"$work/messages")"
  expect_equal "files with $1 KiB free" "$(inputs)" "$(ls -A "$disk")"
}

mkdir "$disk" "$temporary"
mount -t tmpfs -o size=1m tmpfs "$disk" || fail "cannot mount a small disk"
trap 'umount "$disk" "$temporary" 2>/dev/null; rm -rf "$work"' EXIT
mount -t tmpfs -o size=4k tmpfs "$temporary" || fail "cannot mount a small disk"
for free in 0 4 8 12 16 20 24 28 32 40 48 64 96 128; do
  write_project
  dd if=/dev/zero of="$disk/ballast" bs=1k 2>/dev/null || true
  truncate -s "-$((free * 1024))" "$disk/ballast"
  if "$compiler" "$disk/report.hhp" 2>"$work/messages"; then
    check_complete "$free"
    successes=$((successes + 1))
  else
    check_nothing "$free"
    failures=$((failures + 1))
  fi
done
if [ "$failures" -lt 3 ] || [ "$successes" -lt 3 ]; then
  fail "the disk was too full $failures times and had room $successes times"
fi

# The folder for temporary files may be full while the help file's disk has room.
umount "$disk"
mount -t tmpfs -o size=64m tmpfs "$disk" || fail "cannot mount a disk"
topics=1500
rows=1
ending=-$(printf '%050d' 0).htm
write_project
printf '' >"$disk/ballast"
[ "$(wc -c <"$disk/report.hhp")" -gt 65536 ] || fail "the project is too small for the shell to need a temporary file"
dd if=/dev/zero of="$temporary/ballast" bs=1k 2>/dev/null || true
TMPDIR="$temporary" "$compiler" "$disk/report.hhp" 2>"$work/messages" ||
  fail "the compiler fails when the folder for temporary files is full: $(cat "$work/messages")"
check_complete 65536
