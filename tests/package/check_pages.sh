#!/usr/bin/env bash
# Checks the manual and the completions of the command in the programs that read them, and that no option is missing.
#
#   check_pages.sh man|bash|zsh|fish|guide PAGES COMMAND [GUIDE]
set -euo pipefail

kind="$1"
pages="$2"
guide="${4:-}"
command_dir="$(cd "$(dirname "$3")" && pwd)"
command_name="$(basename "$3")"

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir 'out folder'
touch notes.md 'two words.md'
export PATH="$command_dir:$PATH" LC_ALL=C.UTF-8 HOME="$work"

fail() {
  printf 'check_pages: %s\n' "$1"
  exit 1
}

# expect NAME ACTUAL EXPECTED
expect() {
  [ "$2" = "$3" ] || fail "$1: got <$2>, expected <$3>"
}

# The long options that the help names first in a line.
long_options() {
  "$command_name" --help | sed -nE 's/^  (-., )?--([a-z-]+).*/\2/p'
}

require_all_options() {
  local option count=0
  for option in $(long_options); do
    grep -qE -- "$2$option([^a-z-]|$)" "$1" || fail "$1 lacks --$option"
    count=$((count + 1))
  done
  [ "$count" -gt 20 ] || fail "the help has only $count options"
}

check_man() {
  local page="$pages/man/scrivalen.1" warnings
  warnings="$(groff -man -ww -b -z -Tutf8 "$page" 2>&1)"
  expect 'warnings of groff' "$warnings" ''
  warnings="$(man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)"
  expect 'warnings of man' "$warnings" ''
  MANWIDTH=80 MANPAGER=cat man -l "$page" >page.txt
  require_all_options page.txt '--'
  awk 'length > 80 { exit 1 }' page.txt || fail 'the page is wider than 80 columns'
  grep -q 'scrivalen - turn' page.txt || fail 'the page has no name'
  grep -q 'docs/settings.md' page.txt || fail 'the page does not say where the settings are described'
}

check_guide() {
  require_all_options "$guide" '`--'
}

# What bash offers for a command line of several words, sorted.
bash_offers() {
  bash -c '
    source "$1"
    shift
    COMP_WORDS=("$@")
    COMP_CWORD=$(($# - 1))
    "$(complete -p scrivalen | sed "s/.*-F \([^ ]*\).*/\1/")"
    printf "%s\n" "${COMPREPLY[@]}"' _ "$pages/bash/scrivalen" "$@" | sort | tr '\n' '|'
}

check_bash() {
  require_all_options "$pages/bash/scrivalen" '--'
  expect 'a long option' "$(bash_offers scrivalen --titl)" '--title|'
  expect 'options with one beginning' "$(bash_offers scrivalen a.md --out)" '--output|--output-dir|'
  expect 'formats' "$(bash_offers scrivalen --from '')" 'csv|markdown|tsv|'
  expect 'a format after =' "$(bash_offers scrivalen --from = m)" 'markdown|'
  expect 'nothing after =' "$(bash_offers scrivalen --from =)" 'csv|markdown|tsv|'
  expect 'a list of formats' "$(bash_offers scrivalen --to html,p)" 'html,pdf|'
  expect 'files' "$(bash_offers scrivalen '')" 'notes.md|out folder|two words.md|'
  expect 'a file with a blank' "$(bash_offers scrivalen -o two)" 'two words.md|'
  expect 'a file after a format' "$(bash_offers scrivalen -o html : no)" 'notes.md|'
  expect 'a folder' "$(bash_offers scrivalen --output-dir '')" 'out folder|'
  expect 'a template' "$(bash_offers scrivalen --template def)" 'default|'
  expect 'a title' "$(bash_offers scrivalen --title '')" '|'
  expect 'a file after --' "$(bash_offers scrivalen -- -)" '|'
}

check_fish() {
  local script="$pages/fish/scrivalen.fish" option
  fish --no-execute "$script" || fail 'fish does not read the script'
  for option in $(long_options); do
    offers="$(fish -c "source '$script'; complete -C 'scrivalen --$option'" | cut -f1)"
    printf '%s\n' "$offers" | grep -qx -- "--$option" || fail "fish does not offer --$option"
  done
  offers() {
    fish -c "source '$script'; complete -C '$1'" | cut -f1 | sort | tr '\n' '|'
  }
  expect 'formats' "$(offers 'scrivalen --from ')" 'csv|markdown|tsv|'
  expect 'a list of formats' "$(offers 'scrivalen --to html,p')" 'html,pdf|'
  expect 'a file' "$(offers 'scrivalen no')" 'notes.md|'
  expect 'a folder' "$(offers 'scrivalen --output-dir ')" 'out folder/|'
  expect 'a template' "$(offers 'scrivalen --template defa')" 'default|'
}

# A terminal in which keys are typed. The widget on Ctrl+T prints the line that the completion has made.
check_zsh() {
  cat >zsh_check.zsh <<'END'
zmodload zsh/zpty
zpty shell zsh -f -i
send() { zpty -w -n shell "$1"$'\n' }
send 'PS1= PS2= RPS1=; unsetopt zle_bracketed_paste; unset zle_bracketed_paste'
send "fpath=($1 \$fpath); autoload -Uz compinit; compinit -u -D; setopt no_list_beep; LISTMAX=1000"
send "zstyle ':completion:*' insert-tab false"
send 'show() { print; print -r -- "<<$BUFFER>>"; BUFFER=; }; zle -N show; bindkey "^T" show'
send 'print ready'
typeset text seen
while zpty -r shell seen; do
  [[ $seen == *$'\n'*ready* || $seen == ready* ]] && break
done
for line in "${@:2}"; do
  zpty -w -n shell "$line"$'\t\x14'
  zpty -r shell seen $'*<<*>>*'
  text=${seen##*<<}
  print -r -- "${text%%>>*}"
done
zpty -d shell
END
  zsh -n "$pages/zsh/_scrivalen" || fail 'zsh does not read the script'
  local option typed=('scrivalen --titl' 'scrivalen --verb' 'scrivalen --from ma' 'scrivalen --from=ma'
    'scrivalen --to html,pd' 'scrivalen -o tw' 'scrivalen --output-dir ou' 'scrivalen --template defa')
  local others=${#typed[@]}
  for option in $(long_options); do
    typed+=("scrivalen --$option")
  done
  timeout 60 zsh -f zsh_check.zsh "$pages/zsh" "${typed[@]}" >lines
  # The comma goes away again when something else is typed.
  expect 'completed lines' "$(head -n "$others" lines)" "scrivalen --title=
scrivalen --verbose 
scrivalen --from markdown 
scrivalen --from=markdown 
scrivalen --to html,pdf,
scrivalen -o two\\ words.md 
scrivalen --output-dir out\\ folder/
scrivalen --template default "
  # Options with a value get "=".
  expect 'the options' "$(tail -n +$((others + 1)) lines | sed -E 's/^scrivalen --([a-z-]+).*/\1/')" "$(long_options)"
}

"check_$kind"
