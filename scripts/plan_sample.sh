#!/usr/bin/env bash
# Installs what is needed, builds the library and the planner, plans the sample sheet that ships with
# the project and says where the picture and the report are. Arguments go to the planner instead:
#   scripts/plan_sample.sh drawing.dxf --snap 0.05
set -euo pipefail
here=$(pwd)
cd "$(dirname "$0")/.."
. scripts/machine.sh

# shellcheck disable=SC2086
install_packages $BUILD_PACKAGES
say "Building"
configure plan
cmake --build --preset plan || fail "the build failed, see above"

planner=$PWD/build/plan/examples/sheet_planner/sheet_planner
out=$PWD/build/plan/sample
mkdir -p "$out"
if [ $# -gt 0 ]; then
  cd "$here"
  exec "$planner" "$@"
fi
say "Planning the sample sheet"
"$planner" --sample plate --output "$out/plan.svg" --json "$out/plan.json" | tee "$out/report.txt"
rsvg-convert -w 1600 "$out/plan.svg" -o "$out/plan.png"
say "Done"
printf 'picture: %s\n         %s\nreport:  %s\nmoves:   %s\n' "$out/plan.svg" "$out/plan.png" "$out/report.txt" \
  "$out/plan.json"
