#!/usr/bin/env bash
# Installs missing packages on a Debian 12 machine. It is quick when nothing is missing and may run any number of times.
#
#   scripts/setup.sh demo    what scripts/demo.sh needs
#   scripts/setup.sh test    what scripts/test.sh needs: also the cross-compiler, Wine and the validators
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
sources="$root/build/sources"
documents="$root/build/documents"
incoming=""
missing=()

fail() {
  printf 'setup: %s\n' "$*" >&2
  exit 1
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    fail "this needs root, and sudo is missing: $*"
  fi
}

is_installed() {
  [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

need_packages() {
  local package
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
}

# need_command COMMAND PACKAGE...: for programs that may have been installed from elsewhere, where their package could
# even conflict.
need_command() {
  local command=$1
  shift
  command -v "$command" >/dev/null || need_packages "$@"
}

need_build() {
  need_command g++ g++
  need_command cmake cmake
  need_command ninja ninja-build
  need_packages libmd4c-dev libyaml-dev libcsv-dev libcli11-dev
  need_packages libharfbuzz-dev libfribidi-dev libdeflate-dev libexpat1-dev zlib1g-dev
  need_packages libgtest-dev libbenchmark-dev libhpdf-dev libxlsxwriter-dev libpango1.0-dev fonts-lohit-deva
  need_packages fonts-liberation2 fonts-dejavu-core fonts-dejavu-extra
  need_command chmcmd fp-utils
}

need_test() {
  need_command x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64-posix
  need_command wine wine wine64
  need_command git git
  need_command pkg-config pkgconf
  need_command man man-db
  need_command groff groff-base
  need_command zsh zsh
  need_command fish fish
  need_command unshare util-linux
  need_command mount mount
  need_command cmark cmark
  need_command cmark-gfm cmark-gfm
  need_command xmllint libxml2-utils
  need_command unzip unzip
  need_command 7z p7zip-full
  need_command chromium chromium
  need_command java default-jre-headless
  need_command node nodejs
  need_command npm npm
  need_command soffice libreoffice-writer-nogui
  need_command unrtf unrtf
  need_command pandoc pandoc
  need_command qpdf qpdf
  need_command pdftotext poppler-utils
  need_command mutool mupdf-tools
  need_command extract_chmLib libchm-bin
  need_command gs ghostscript
  need_command perl perl
  need_command mcs mono-mcs
  need_command mono mono-runtime
  need_command python3 python3
  need_command mypy mypy
  need_command clang++ clang
  need_command lld-link lld
  need_command llvm-dlltool llvm
  need_packages libclang-rt-14-dev libz-mingw-w64-dev
  need_packages python3-openpyxl python3-docx libreoffice-calc-nogui
  need_packages python3-setuptools python3-wheel python3-venv
  need_packages libpdfbox2-java libcommons-io-java libjaxb-java libactivation-java
  need_packages binutils time unicode-data fonts-urw-base35 fonts-lohit-deva fonts-tlwg-garuda-ttf libharfbuzz-bin
  need_command ccache ccache
}

install_missing() {
  [ "${#missing[@]}" -gt 0 ] || return 0
  printf 'setup: installing %s\n' "${missing[*]}"
  as_root apt-get -q update
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=120 install -y --no-install-recommends \
    "${missing[@]}"
}

# The Debian archives in this machine's apt sources, one per line: address, release, component.
debian_archives() {
  # shellcheck disable=SC2016  # apt expands these, not the shell
  apt-get indextargets --format '$(ORIGIN)|$(REPO_URI)|$(RELEASE)|$(COMPONENT)' 'Created-By: Packages' |
    awk -F'|' '$1 == "Debian" && $4 == "main" {print $2, $3, $4}' | sort -u
}

# The machine's own archives again, this time for source packages.
write_source_entries() {
  local file=$1 keyring=/usr/share/keyrings/debian-archive-keyring.gpg archives uri release component
  archives="$(debian_archives)"
  if [ -z "$archives" ]; then
    as_root apt-get -q update
    archives="$(debian_archives)"
  fi
  [ -n "$archives" ] || fail "apt has no Debian archive for source packages"
  while read -r uri release component; do
    printf 'Types: deb-src\nURIs: %s\nSuites: %s\nComponents: %s\n' "$uri" "$release" "$component"
    [ ! -f "$keyring" ] || printf 'Signed-By: %s\n' "$keyring"
    printf '\n'
  done <<<"$archives" >"$file"
}

# Runs apt with lists of its own, so that the machine's sources stay unchanged. It still verifies signatures.
private_apt() {
  local sandbox=()
  [ "$(id -u)" -ne 0 ] || sandbox=(-o APT::Sandbox::User=root)
  apt-get -q "${sandbox[@]}" -o Dir::Etc::sourcelist="$incoming/archives.sources" -o Dir::Etc::sourceparts=/dev/null \
    -o Dir::State::lists="$incoming/lists" -o Dir::Cache="$incoming/cache" "$@"
}

# Unpacks the upstream tarballs, all that a cross-build needs of a source package, into build/sources/NAME-VERSION/. A
# folder there is always complete.
fetch_sources() {
  local package wanted=()
  for package in "$@"; do
    compgen -G "$sources/$package-[0-9]*/" >/dev/null || wanted+=("$package")
  done
  [ "${#wanted[@]}" -gt 0 ] || return 0
  printf 'setup: fetching the sources of %s\n' "${wanted[*]}"
  mkdir -p "$sources"
  incoming="$(mktemp -d "$sources/.incoming.XXXXXX")"
  mkdir -p "$incoming/lists/partial" "$incoming/cache"
  write_source_entries "$incoming/archives.sources"
  private_apt update
  (cd "$incoming" && private_apt source --tar-only "${wanted[@]}")
  for package in "${wanted[@]}"; do
    unpack_source "$package"
  done
}

unpack_source() {
  local package=$1 tarballs version folder
  mapfile -t tarballs < <(compgen -G "$incoming/${package}_*.orig.tar.*")
  [ "${#tarballs[@]}" -eq 1 ] || fail "the source package $package does not have exactly one tarball"
  version="${tarballs[0]##*/"${package}"_}"
  folder="$package-${version%.orig.tar.*}"
  mkdir "$incoming/$folder"
  tar --no-same-owner -xf "${tarballs[0]}" -C "$incoming/$folder" --strip-components=1
  mv "$incoming/$folder" "$sources/"
}

# Unpacks packages, without installing them, into build/documents/NAME/: documents that others wrote. A folder there is
# always complete.
fetch_documents() {
  local package wanted=() sandbox=()
  for package in "$@"; do
    [ -d "$documents/$package" ] || wanted+=("$package")
  done
  [ "${#wanted[@]}" -gt 0 ] || return 0
  printf 'setup: fetching the documents of %s\n' "${wanted[*]}"
  mkdir -p "$documents"
  remove_incoming  # that of the sources
  incoming="$(mktemp -d "$documents/.incoming.XXXXXX")"
  apt-cache show "${wanted[@]}" >/dev/null 2>&1 || as_root apt-get -q update
  [ "$(id -u)" -ne 0 ] || sandbox=(-o APT::Sandbox::User=root)
  (cd "$incoming" && apt-get -q "${sandbox[@]}" download "${wanted[@]}")
  for package in "${wanted[@]}"; do
    dpkg-deb -x "$incoming/${package}_"*.deb "$incoming/$package"
    mv "$incoming/$package" "$documents/"
  done
}

remove_incoming() {
  [ -z "$incoming" ] || rm -rf "$incoming"
}

install_node_modules() {
  local installed="$root/node_modules/.package-lock.json"
  if [ ! "$installed" -nt "$root/package-lock.json" ] || [ ! "$installed" -nt "$root/package.json" ]; then
    (cd "$root" && npm ci --omit=optional --ignore-scripts --no-audit --no-fund)
  fi
}

[ "$#" -eq 1 ] || fail "usage: scripts/setup.sh demo|test"
command -v apt-get >/dev/null || fail "this script supports only Debian: there is no apt-get"
trap remove_incoming EXIT
case "$1" in
  demo)
    need_build
    install_missing
    ;;
  test)
    need_build
    need_test
    install_missing
    fetch_sources md4c libcsv libyaml harfbuzz fribidi libdeflate expat
    fetch_documents gdal-data golang-github-gomarkdown-markdown-dev libjs-bootstrap4 librust-bat-dev librust-regex-dev \
      node-marked python3-arabic-reshaper r-cran-data.table ruby-grape ruby-sinatra
    install_node_modules
    ;;
  *)
    fail "unknown purpose '$1': demo or test"
    ;;
esac
