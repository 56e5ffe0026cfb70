#!/bin/sh
# What Doxygen reads in place of a header. A label at the start of a comment line ("Errors: ...")
# becomes a command that shows it as a paragraph with a heading; the dots of a range are no end of a
# sentence; special members that the compiler writes (`= default`) have nothing to tell.
exec sed -E \
  -e 's#^([[:space:]]*///<?) (Tolerance|Ties|Errors|Ownership|Cost): #\1 \\label{\2} #' \
  -e '/\/\/\//s# \.\. # … #g' \
  -e '/^[^/]*\) *(noexcept)? = default;/s/.*//' "$1"
