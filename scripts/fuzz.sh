#!/usr/bin/env bash
# Fuzzes the library with libFuzzer, AddressSanitizer and UndefinedBehaviorSanitizer.
#   scripts/fuzz.sh TARGET SECONDS [LIBFUZZER OPTION...]   searches; starts from all inputs known
#   scripts/fuzz.sh --smoke [BUILD_DIR]   replays every corpus, then searches 3 s a target,
#                                          always the same way
# fuzz/corpus/TARGET holds the inputs that the project keeps. A search adds what it discovers to
# build/fuzz/corpus/TARGET and leaves inputs that fail in build/fuzz/findings. --smoke takes programs
# that BUILD_DIR has built already; otherwise everything is built here.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/machine.sh

build=build/fuzz
export UBSAN_OPTIONS=print_stacktrace=1
limits=(-timeout=10 -rss_limit_mb=2048)

# kept TARGET: the folder of the inputs that the project keeps, if there is one.
kept() { [ ! -d "fuzz/corpus/$1" ] || printf '%s\n' "fuzz/corpus/$1"; }

# dictionary TARGET: the option for the words of its language, if it has one.
dictionary() { [ ! -f "fuzz/$1.dict" ] || printf '%s\n' "-dict=fuzz/$1.dict"; }

# smoke TARGET: one line a target; all that libFuzzer said when it found something.
smoke() {
  local target=$1 work log
  work=$(mktemp -d)
  log=$work/log
  # shellcheck disable=SC2046
  if "$build/fuzz/$target" "${limits[@]}" -runs=0 -artifact_prefix="$work/" $(kept "$target") >"$log" 2>&1 &&
    "$build/fuzz/$target" "${limits[@]}" -seed=1 -max_total_time=3 -print_final_stats=1 \
      $(dictionary "$target") -artifact_prefix="$work/" "$(mkdir "$work/new" && echo "$work/new")" $(kept "$target") >>"$log" 2>&1; then
    printf '%-16s %4d kept inputs, %s executions\n' "$target" \
      "$(find "fuzz/corpus/$target" -type f 2>/dev/null | wc -l)" \
      "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")"
    rm -r "$work"
  else
    cat "$log"
    printf '%s found something: the input is in %s\n' "$target" "$work"
    return 1
  fi
}

mapfile -t targets < <(sed -n 's/^tarnalgo_fuzz(\([A-Za-z0-9]*\).*/\1/p' fuzz/CMakeLists.txt)

if [ "${1:-}" = --smoke ]; then
  if [ $# -gt 1 ]; then
    build=$2
  else
    configure fuzz
    cmake --build --preset fuzz
  fi
  # As many at a time as there are cores; the lines in the order of the list.
  export -f smoke kept dictionary
  export build
  say "Fuzzers: kept inputs, then a short search"
  printf '%s\n' "${targets[@]}" |
    limits_text="${limits[*]}" xargs -P "$(nproc)" -I{} bash -c 'limits=($limits_text); smoke {}' ||
    fail "a fuzzer found something, see above"
  exit
fi

[ $# -ge 2 ] || fail "usage: fuzz.sh --smoke [BUILD_DIR] | fuzz.sh TARGET SECONDS [OPTION...]; targets: ${targets[*]}"
target=$1 seconds=$2
shift 2
configure fuzz
cmake --build --preset fuzz --target "$target"
mkdir -p "$build/corpus/$target" "$build/findings"
# shellcheck disable=SC2046
exec "$build/fuzz/$target" "${limits[@]}" -max_total_time="$seconds" -print_final_stats=1 \
  $(dictionary "$target") -artifact_prefix="$build/findings/$target-" "$@" "$build/corpus/$target" $(kept "$target")
