#!/usr/bin/env bash
# Builds tests/digest with both compilers at several optimisations, once without the wide
# instructions, and compares what the builds print: the same bytes, or the units are named.
#   scripts/digest.sh [--all]   the corners; with --all every level of optimisation
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/machine.sh

builds=(g++-O0 g++-O3 clang++-O0 clang++-O3 g++-O3-narrow)
[ "${1:-}" != --all ] || builds+=(g++-O1 g++-O2 clang++-O1 clang++-O2 clang++-O3-narrow)

mkdir -p build/digest
for build in "${builds[@]}"; do
  IFS=- read -r compiler level narrow <<<"$build"
  configure digest -B "build/digest/$build" -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_CXX_FLAGS="-$level" -DTARNALGO_NARROW="${narrow:+ON}"
  cmake --build "build/digest/$build" >"build/digest/$build.log" ||
    { cat "build/digest/$build.log"; fail "$build does not build"; }
  "build/digest/$build/tests/digest/Digest" >"build/digest/$build.txt" || fail "$build ends in a failure"
  [ -s "build/digest/$build.txt" ] || fail "$build prints nothing"
done

first=${builds[0]}
different=""
for build in "${builds[@]:1}"; do
  if ! diff "build/digest/$first.txt" "build/digest/$build.txt" >"build/digest/$build.diff"; then
    printf '%s and %s differ in: %s\n' "$first" "$build" \
      "$(sed -nE 's/^> (.*[^ ]) +[0-9a-f]{16}$/\1/p' "build/digest/$build.diff" | paste -sd, | sed 's/,/, /g')"
    different=yes
  fi
done
[ -z "$different" ] || fail "the results depend on the compiler"
printf 'the same bytes in %d units from %s\n' "$(wc -l <"build/digest/$first.txt")" "${builds[*]}"
