#!/usr/bin/env bash
# Checks the format of all C++ files; with --fix lets clang-format mend what it can.
set -euo pipefail
cd "$(dirname "$0")/.."
mode=(--dry-run --Werror)
[ "${1:-}" != --fix ] || mode=(-i)
git ls-files -z '*.h' '*.cpp' | xargs -0 clang-format "${mode[@]}"
# clang-format leaves comments alone (it would run the labelled lines together), so their width is
# checked here.
if git ls-files -z '*.h' '*.cpp' | LC_ALL=C.UTF-8 xargs -0 grep -nE '^.{101,}$'; then
  echo 'lines above are longer than 100 characters' >&2
  exit 1
fi
if git ls-files -z '*.h' | xargs -0 grep -nE '///.*[.;)] (Tolerance|Ties|Errors|Ownership|Cost):'; then
  echo 'labels above do not start their line' >&2
  exit 1
fi
