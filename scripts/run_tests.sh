#!/usr/bin/env bash
# Installs what is needed and checks everything: format, GCC and Clang builds without a warning,
# self-sufficient headers, clang-tidy, the reference documentation, the same results from every
# build, the fuzzers on the inputs that are kept, then the tests in the ordinary build and under
# sanitizers. The last lines are the test runner's summary.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/machine.sh

start=$SECONDS
stage() {
  printf '\n   (%d s)\n' $((SECONDS - start))
  start=$SECONDS
  say "$1"
}

# shellcheck disable=SC2086
install_packages $TEST_PACKAGES
export CCACHE_DIR=${CCACHE_DIR:-$PWD/.ccache}
export CCACHE_SLOPPINESS=pch_defines,time_macros  # else nothing behind a precompiled header is found
cores=$(nproc)

stage "Format"
scripts/format.sh || fail "run scripts/format.sh --fix"

stage "GCC: library, tests, examples, benchmarks; warnings are errors; every header alone"
configure dev -DTARNALGO_BUILD_BENCH=ON -DTARNALGO_BENCH_PEERS=OFF
cmake --build --preset dev --target all all_verify_interface_header_sets

stage "Clang: library, tests, examples, fuzzers, with sanitizers; warnings are errors"
configure asan -DTARNALGO_PRECOMPILE=ON
cmake --build --preset asan

stage "clang-tidy"
scripts/tidy.sh build/asan

stage "Reference documentation"
scripts/docs.sh

export UBSAN_OPTIONS=print_stacktrace=1
stage "The same bytes from both compilers"
scripts/digest.sh

stage "Fuzzers"
scripts/fuzz.sh --smoke build/asan

stage "Tests"
ctest --preset dev -j "$cores"
stage "Tests under AddressSanitizer, UndefinedBehaviorSanitizer, LeakSanitizer"
ctest --preset asan -j "$cores"
