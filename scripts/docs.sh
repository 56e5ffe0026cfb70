#!/usr/bin/env bash
# Builds the reference documentation, build/docs/html/index.html: the public headers, with README.md
# as the main page and the pages of docs/ beside it. A public name without a comment, a link that
# leads nowhere or a picture that is missing ends it with an error.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/machine.sh

# shellcheck disable=SC2086
install_packages $DOCS_PACKAGES

# The installed headers, but for those that say they are internal.
headers() {
  local folder=""
  for folder in host containers geometryAlgo; do
    awk -v folder="$folder" '/HEADERS/ { inside = 1; next } /SOURCES|^ *\)/ { inside = 0 }
      inside { sub(/\)$/, "", $1); print folder "/" $1 }' "$folder/CMakeLists.txt"
  done | xargs grep -L 'Internal to the'
}

rm -rf build/docs
mkdir -p build/docs
{
  cat docs/Doxyfile
  # Doxygen puts all pictures into one folder.
  printf 'IMAGE_PATH = %s\n' "$(find docs -name '*.png' -o -name '*.svg' | xargs -r dirname | sort -u | tr '\n' ' ')"
  # Without the whole path any README.md would be the main page.
  printf 'USE_MDFILE_AS_MAINPAGE = "%s/README.md"\n' "$PWD"
  printf 'INPUT = README.md CONTRIBUTING.md CHANGELOG.md docs examples/sheet_planner/README.md %s\n' \
    "$(headers | tr '\n' ' ')"
} | doxygen - || fail "the reference documentation is incomplete: see the warnings above"
# Doxygen lets a picture pass that it does not find.
grep -ho '<img src="[^"]*"' build/docs/html/*.html | cut -d'"' -f2 | sort -u | while read -r picture; do
  [ -f "build/docs/html/$picture" ] || fail "there is no picture $picture"
done
say "Reference documentation: build/docs/html/index.html"
