#!/usr/bin/env bash
# Installs what is needed and checks everything: format, GCC and Clang builds without a warning,
# clang-tidy, self-sufficient headers, then the tests in the ordinary build and under sanitizers.
# The last lines are the test runner's summary.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/machine.sh

# shellcheck disable=SC2086
install_packages $TEST_PACKAGES
export CCACHE_DIR=${CCACHE_DIR:-$PWD/.ccache}

say "Format"
scripts/format.sh || fail "run scripts/format.sh --fix"

say "GCC build, warnings are errors; every header alone"
configure dev
cmake --build --preset dev
cmake --build --preset dev --target all_verify_interface_header_sets

say "Clang build, warnings are errors"
configure clang
cmake --build --preset clang

say "clang-tidy"
scripts/tidy.sh build/clang

say "Sanitizer build"
configure asan
cmake --build --preset asan

say "Tests"
ctest --preset dev
say "Tests under AddressSanitizer, UndefinedBehaviorSanitizer, LeakSanitizer"
export UBSAN_OPTIONS=print_stacktrace=1
ctest --preset asan
