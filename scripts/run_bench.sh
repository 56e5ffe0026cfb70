#!/usr/bin/env bash
# Builds the benchmarks optimised and runs them, each beside its peer: scripts/run_bench.sh [FILTER]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/machine.sh
# shellcheck disable=SC2086
install_packages $BENCH_PACKAGES
configure release
cmake --build --preset release
for program in build/release/bench/*Bench; do
  say "$(basename "$program")"
  "$program" --benchmark_filter="${1:-.}" --benchmark_repetitions=5 \
    --benchmark_report_aggregates_only=true --benchmark_min_time=0.1
done
