#!/bin/sh
# What Doxygen reads in place of a header. A label at the start of a comment line ("Errors: ...")
# becomes a command that shows it as a paragraph with a heading; the dots of a range are no end of a
# sentence; special members that the compiler writes (`= default`) need no comment.
exec awk '
  { line = $0 }
  match(line, /^ *\/\/\/<? (Tolerance|Ties|Errors|Ownership|Cost): /) {
    split(substr(line, 1, RLENGTH), word, /[ :]+/)
    label = word[1] != "" ? word[2] : word[3]
    at = index(line, label)
    line = substr(line, 1, at - 1) "\\label{" label "}" substr(line, at + length(label) + 1)
  }
  line ~ /\/\/\// { gsub(/ \.\. /, " … ", line) }
  line ~ /^[^\/]*\) *(const *)?(noexcept *)?= default;/ && last !~ /^ *\/\/\// { line = "" }
  { last = $0; print line }
' "$1"
