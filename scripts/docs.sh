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
  printf 'INPUT = README.md CONTRIBUTING.md CHANGELOG.md docs %s\n' "$(headers | tr '\n' ' ')"
} | doxygen - || fail "the reference documentation is incomplete: see the warnings above"
say "Reference documentation: build/docs/html/index.html"
