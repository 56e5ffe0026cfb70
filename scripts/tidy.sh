#!/usr/bin/env bash
# clang-tidy: scripts/tidy.sh BUILD_DIR [FILE...]; without files over the library and the examples.
# The build directory must have been configured with Clang, so that its flags are Clang's.
#
# Most of the time of clang-tidy goes into the standard headers, over and over. So the sources of one
# folder are checked as one text: pasted together, not included, because some checks look only at the
# main file. What is reported is told by the places in the sources.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
shift
mode=together
[ $# -eq 0 ] || mode=alone
[ $# -gt 0 ] || mapfile -t files < <(git ls-files 'host/*.cpp' 'containers/*.cpp' 'geometryAlgo/*.cpp' 'examples/*.cpp')
[ $# -gt 0 ] && files=("$@")

texts=$build/tidy
rm -rf "$texts"
mkdir -p "$texts"
for file in "${files[@]}"; do
  folder=$(dirname "$file")
  # Programs of one file have a main each.
  if [ $mode = alone ] || [ "$folder" = examples ]; then folder=$file; fi
  text=$texts/$(printf '%s' "${folder%.cpp}" | tr / _)
  command=$(grep -F -- "-c $PWD/$file\"," "$build/compile_commands.json") ||
    { echo "tidy: $build does not build $file" >&2; exit 1; }
  # Of the compiler's arguments, out of their JSON: definitions, include paths, the language.
  printf '%s\n' "$command" | grep -oE -- ' -(D|I|isystem |std=)[^ ]+' | sed 's/\\\(.\)/\1/g' >>"$text.flags"
  { printf '// source: %s\n' "$file" && cat "$file" && echo; } >>"$text.cpp"
done

# check TEXT: without a finding silent.
check() {
  local text=$1 flags result=0
  mapfile -t flags < <(sort -u "${text%.cpp}.flags" | xargs -n 1)
  clang-tidy --quiet --warnings-as-errors='*' "$text" -- "${flags[@]}" >"$text.log" 2>/dev/null || result=1
  awk -v text="$(basename "$text")" '
    FNR == NR { if (sub(/^\/\/ source: /, "")) { first[++count] = FNR; name[count] = $0 } next }
    match($0, "[^ ]*/" text ":[0-9]+") {
      line = substr($0, RSTART, RLENGTH)
      sub(/.*:/, "", line)
      for (at = count; first[at] > line; --at) {}
      $0 = substr($0, 1, RSTART - 1) name[at] ":" line - first[at] substr($0, RSTART + RLENGTH)
    }
    { print }' "$text" "$text.log"
  return $result
}
export -f check
# The largest first, so that no core waits long for the last.
ls -S "$texts"/*.cpp | xargs -n 1 -P "$(nproc)" bash -c 'check "$0"'
