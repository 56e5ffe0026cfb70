# docs/exceptions.md names every message that the code raises, and none that it does not.
#   cmake -DROOT=... -P ExceptionsPage.cmake
file(READ "${ROOT}/docs/exceptions.md" Page)
file(GLOB_RECURSE Sources ${ROOT}/host/*.h ${ROOT}/host/*.cpp ${ROOT}/containers/*.h
  ${ROOT}/containers/*.cpp ${ROOT}/geometryAlgo/*.h ${ROOT}/geometryAlgo/*.cpp)
list(REMOVE_ITEM Sources ${ROOT}/host/Exceptions.h)

# Brackets would keep the elements of a list together.
string(REPLACE "[" "(" Page "${Page}")
string(REPLACE "]" ")" Page "${Page}")
set(Missing "")
set(AllCode "")
set(Count 0)
foreach(Source ${Sources})
  file(READ ${Source} Code)
  string(REPLACE "[" "(" Code "${Code}")
  string(REPLACE "]" ")" Code "${Code}")
  string(APPEND AllCode "${Code}")
  # A raise, or a call or constant that hands it the place or the text.
  string(REGEX MATCHALL
    "(Raise(Error|Text)|AssertThat|Checked[A-Z]|Require[A-Z]|CallClipper|TextFile|DebugFile|kWhere|kEmpty|kUnit)[^;{}]*"
    Statements "${Code}")
  foreach(Statement ${Statements})
    # "Where", "Text" come out as Where: Text.
    string(REGEX REPLACE "\"(T[A-Za-z0-9<>.]+)\",[ \n]*\"" "\"\\1: " Statement "${Statement}")
    string(REGEX MATCHALL "\"[^\"\n]+\"" Texts "${Statement}")
    foreach(Text ${Texts})
      string(REPLACE "\"" "" Text "${Text}")
      math(EXPR Count "${Count} + 1")
      string(FIND "${Page}" "${Text}" Found)
      if(Found EQUAL -1)
        string(APPEND Missing "  ${Source}: ${Text}\n")
      endif()
    endforeach()
  endforeach()
endforeach()
if(Missing OR Count LESS 100)
  message(FATAL_ERROR "docs/exceptions.md lacks (of ${Count} texts):\n${Missing}")
endif()

string(REGEX MATCHALL "`\\(Error\\) ?[^:`]+: [^`]*`" Named "${Page}")
foreach(Message ${Named})
  string(REGEX MATCH "\\) ?([^:]+)" Ignored "${Message}")
  string(FIND "${AllCode}" "${CMAKE_MATCH_1}" Found)
  if(Found EQUAL -1)
    message(FATAL_ERROR "docs/exceptions.md names what is not raised: ${Message}")
  endif()
endforeach()
