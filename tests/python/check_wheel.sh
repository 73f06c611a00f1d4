#!/usr/bin/env bash
# Builds the wheel, installs it into an empty environment without network, and writes documents with it there.
#
#   check_wheel.sh CMAKE BUILD_FOLDER C_PROGRAM PYTHON
set -euo pipefail

export CMAKE=$1 PYTHON=$4
build=$2
program=$3
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

fail() {
  printf 'check_wheel: %s\n' "$*" >&2
  exit 1
}

# In the environment there is neither this source tree nor the library of the build.
run() {
  (cd "$work/run" && env -i PATH=/usr/bin:/bin "$work/venv/bin/python" "$@")
}

wheel="$("$root/scripts/wheel.sh" "$build" "$work")"
case "$wheel" in
  */scrivalen-[0-9]*-py3-none-linux_x86_64.whl) ;;
  *) fail "the wheel has another name: $wheel" ;;
esac
"$PYTHON" -m venv "$work/venv"
"$work/venv/bin/python" -m pip install --quiet --no-index --no-deps --disable-pip-version-check "$wheel"

mkdir -p "$work/run" "$work/c" "$work/package"
run "$root/examples/hello_document.py"
grep -q 'Tea & biscuits' "$work/run/hello.txt" || fail "the text lacks its table"
grep -q 'Tea &amp; biscuits' "$work/run/hello.html" || fail "the page lacks its table"

"$program" "$work/c" >"$work/c/warnings"
run "$root/examples/document_package.py" "$work/package" >"$work/package/warnings"
diff -r "$work/c" "$work/package" || fail "the documents differ from those of C"

# The data folders are beside the library, where a template is found by its name.
run - <<'END'
import os, scrivalen
home = os.path.join(os.path.dirname(scrivalen.__file__), "lib")
assert os.sep + "venv" + os.sep in home, home
assert os.path.isfile(os.path.join(home, "tmpl", "default.htm")), os.listdir(home)
assert os.path.isfile(os.path.join(home, "fonts", "LiberationSerif-Regular.ttf")), os.listdir(home)
assert os.access(os.path.join(home, "hhc", "hhc.exe"), os.X_OK), os.listdir(home)
assert os.path.isfile(os.path.join(os.path.dirname(home), "py.typed"))
with scrivalen.Document("page.html", template=os.path.join(home, "tmpl", "default.htm")) as doc:
    doc.paragraph("in a template")
with scrivalen.Document("help.chm") as doc:
    doc.heading(1, "Help")
with scrivalen.Document("fonts.pdf") as doc:
    doc.paragraph("in a font of the package")
END
[ "$(head -c 4 "$work/run/help.chm")" = ITSF ] || fail "the help compiler made no help"
[ "$(head -c 8 "$work/run/fonts.pdf")" = %PDF-1.7 ] || fail "there is no PDF document with the package's fonts"
grep -q '<main' "$work/run/page.html" || fail "the page is not made from its template"
