#!/usr/bin/env bash
# Reads the names of exported symbols, one per line as c++filt writes them, and has a compiler check that a host with
# the public headers may use each of them. Members are named in a derived class, so that private ones fail; other names
# are used outside any class, so that undeclared ones fail.
#
#   check_declared.sh COMPILER INCLUDE_FOLDER... <NAMES
set -euo pipefail

compiler=$1
shift
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

declarations() {
  awk '
    BEGIN {
      print "#include <scrivalen/scrivalen.h>\n#include <scrivalen/version.h>"
      print "template <typename T> T given();"
    }

    # Sets scope and member of a qualified name.
    function split_name(name) {
      match(name, /^.*::/)
      scope = RLENGTH > 2 ? substr(name, 1, RLENGTH - 2) : ""
      member = RLENGTH > 2 ? substr(name, RLENGTH + 1) : name
    }

    function last_of(name) {
      sub(/^.*::/, "", name)
      return name
    }

    function constructor(arguments) {
      sub(/\)[^)]*$/, "", arguments)
      gsub(/, /, ">(), given<", arguments)
      if (arguments != "") arguments = "given<" arguments ">()"
      return "struct Use" NR " : " scope " { Use" NR "() : " scope "(" arguments ") {} };"
    }

    /^(typeinfo|typeinfo name|vtable) for / {
      sub(/^.* for /, "")
      print "static_assert(sizeof(" $0 ") > 0);"
      next
    }

    {
      name = $0
      arguments = ""
      if (match(name, /\(/)) {
        arguments = substr(name, RSTART + 1)
        name = substr(name, 1, RSTART - 1)
      }
      sub(/\[abi:[^]]*\]/, "", name)
      split_name(name)
      if (scope == "" || scope ~ /^scrivalen(::|$)/) print "namespace use" NR " { using " scope "::" member "; }"
      else if (member == last_of(scope)) print constructor(arguments)
      else if (member ~ /^~/) print "struct Use" NR " : " scope " { Use" NR "(); ~Use" NR "() {} };"
      else print "struct Use" NR " : " scope " { using " scope "::" member "; };"
    }'
}

names="$(cat)"
if [ -z "$names" ]; then
  printf 'check_declared: there are no names to check\n' >&2
  exit 1
fi
declarations <<<"$names" >"$work/uses.cpp"
"$compiler" -std=c++20 -fsyntax-only "${@/#/-I}" "$work/uses.cpp" || {
  printf 'check_declared: the public headers do not let a host use the names in the errors above\n' >&2
  exit 1
}
