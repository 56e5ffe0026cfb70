#!/usr/bin/env bash
# Measures what the tests reach: builds with Clang's source-based coverage, runs every test, replays
# the fuzzers' inputs, writes the table of the library's files into docs/reliability.md (between its
# markers), the pages with every line to build/coverage/html/ and what is not reached, in the form of
# scripts/coverage_explained.txt, to build/coverage/missed.txt. Prints what nobody has explained.
set -euo pipefail
cd "$(dirname "$0")/.."
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$PWD} CCACHE_NOHASHDIR=1
. scripts/machine.sh
# shellcheck disable=SC2086
install_packages $TRUST_PACKAGES

build=build/coverage
configure dev -B "$build" -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g1" \
  -DCMAKE_CXX_FLAGS="-fprofile-instr-generate -fcoverage-mapping" \
  -DTARNALGO_PRECOMPILE=ON -DTARNALGO_BUILD_FUZZ=ON
say "Building with counters"
cmake --build "$build" || fail "the build failed, see above"
say "Running the tests"
rm -rf "$build/profiles" "$build/html"
# %4m: a pool of four files a program, merged while the programs run.
export LLVM_PROFILE_FILE="$PWD/$build/profiles/%4m.profraw"
ctest --test-dir "$build" --output-on-failure
for corpus in fuzz/corpus/*; do
  "$build/fuzz/${corpus##*/}" -runs=0 "$corpus" >"$build/fuzz.log" 2>&1 || fail "see $build/fuzz.log"
done

programs=("$build/examples/sheet_planner/sheet_planner")
for program in "$build"/tests/*Test "$build"/tests/*/*Test "$build"/fuzz/*Fuzz; do
  programs+=(-object "$program")
done
llvm-profdata merge -sparse "$build"/profiles/*.profraw -o "$build/all.profdata"
arguments=("${programs[@]}" -instr-profile "$build/all.profdata"
  -ignore-filename-regex='^/usr/|/(tests|examples|fuzz)/')
# Its warning of mismatched data means inline functions that some program does not call.
llvm-cov show "${arguments[@]}" -format=html -show-branches=count -output-dir "$build/html"
llvm-cov export "${arguments[@]}" >"$build/coverage.json"
python3 scripts/coverage_table.py "$build/coverage.json" "$build/missed.txt" docs/reliability.md
say "Done"
printf 'table:  docs/reliability.md\npages:  %s/html/index.html\nmissed: %s/missed.txt\n' "$build" "$build"
