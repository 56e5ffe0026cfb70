#!/usr/bin/env bash
# clang-tidy over the library and the examples: scripts/tidy.sh BUILD_DIR [FILE...]
# The build directory must have been configured with Clang, so that its flags are Clang's.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
shift
[ $# -gt 0 ] || mapfile -t files < <(git ls-files 'host/*.cpp' 'containers/*.cpp' 'geometryAlgo/*.cpp' 'examples/*.cpp')
[ $# -gt 0 ] && files=("$@")
printf '%s\0' "${files[@]}" |
  xargs -0 -n 1 -P "$(nproc)" clang-tidy --quiet -p "$build" --warnings-as-errors='*' 2>/dev/null
