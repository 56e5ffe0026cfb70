#!/bin/sh
# What Doxygen reads in place of a file.
#
# Of a page: pictures by their bare names, since all of them come into one folder; bold code as bold,
# which is all that it can show.
#
# Of a header: what it declares belongs to the group of its unit (docs/reference.dox); a label at the
# start of a comment line ("Errors: ...") becomes a command that shows it as a paragraph with a
# heading; the dots of a range are no end of a sentence; special members that the compiler writes
# (`= default`) need no comment.
case $1 in
  *.md) exec sed -E -e 's#(!\[[^]]*\]\()[^)]*/#\1#' -e 's#\*\*`([^`]*)`\*\*#**\1**#g' "$1" ;;
esac
unit=$(printf '%s' "$1" | sed -E 's#^(.*/)?(host|containers|geometryAlgo)/([A-Za-z]+).*#\3#')
exec awk -v unit="$unit" '
  { line = $0 }
  # The blank line before a comment at the margin names the group.
  held == "" && before !~ /^\/\/\// && line ~ /^\/\/\/ [^@]/ { held = "/// \\ingroup " unit }
  NR > 1 { print held }
  match(line, /^ *\/\/\/<? (Tolerance|Ties|Errors|Ownership|Cost): /) {
    split(substr(line, 1, RLENGTH), word, /[ :]+/)
    label = word[1] != "" ? word[2] : word[3]
    at = index(line, label)
    line = substr(line, 1, at - 1) "\\label{" label "}" substr(line, at + length(label) + 1)
  }
  line ~ /\/\/\// { gsub(/ \.\. /, " … ", line) }
  line ~ /^[^\/]*\) *(const *)?(noexcept *)?= default;/ && last !~ /^ *\/\/\// { line = "" }
  { before = last; last = $0; held = line }
  END { print held }
' "$1"
