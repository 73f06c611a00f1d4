#!/usr/bin/env bash
# Writes real reports into out/: the guide, and an inventory of every package that is installed on this machine.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
formats=(txt html xml md rtf pdf xlsx docx chm)
out=out
command=build/linux/bin/scrivalen
written=()

export LC_ALL=C.UTF-8

# The separator of dpkg's output occurs in no field; quotes make any text a CSV field.
write_inventory_csv() {
  local separator=$'\x1f' fields
  fields="\${db:Status-Status}$separator\${Package}$separator\${Version}$separator\${Architecture}$separator"
  fields+="\${Installed-Size}$separator\${Section}$separator\${binary:Summary}\n"
  printf 'Package,Version,Architecture,Installed size (KiB),Section,Summary\n'
  dpkg-query -W -f="$fields" | awk -F"$separator" '
    $1 == "installed" {
      for (field = 2; field <= NF; field++) {
        gsub(/"/, "\"\"", $field)
        printf "%s\"%s\"", field == 2 ? "" : ",", $field
      }
      printf "\n"
    }'
}

# write_reports NAME INPUT [OPTION...]: writes all formats in one pass and notes each file with the time of the pass.
write_reports() {
  local name=$1 input=$2 format outputs=() begin end
  shift 2
  for format in "${formats[@]}"; do
    outputs+=(-o "$out/$name.$format")
  done
  begin=${EPOCHREALTIME/./}
  "$command" "$input" "$@" "${outputs[@]}"
  end=${EPOCHREALTIME/./}
  for format in "${formats[@]}"; do
    written+=("$out/$name.$format $((end - begin))")
  done
}

print_table() {
  local entry file microseconds
  printf '\n%-24s %12s %12s\n' "File" "Bytes" "Pass (ms)"
  for entry in "${written[@]}"; do
    read -r file microseconds <<<"$entry"
    printf '%-24s %12d %12d\n' "$file" "$(stat -c %s "$file")" "$((microseconds / 1000))"
  done
  printf 'All formats of one input are written in one pass over it.\n'
}

scripts/setup.sh demo
cmake --preset linux
cmake --build --preset linux --target scrivalen scrivalen_command

mkdir -p "$out"
write_inventory_csv >"$out/inventory.csv"
printf '\nThe inventory has %d packages.\n' "$(($(wc -l <"$out/inventory.csv") - 1))"
write_reports guide docs/classic.md --toc
write_reports inventory "$out/inventory.csv" --title "Packages of this machine"
print_table
