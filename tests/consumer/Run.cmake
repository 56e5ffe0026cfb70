# Installs the build, moves the installed tree elsewhere, builds the consumer project against it and
# runs it: what `cmake --install` gives must be complete and relocatable.
#   cmake -DBUILD=... -DWORK=... -DSOURCE=... -DCXX=... -P Run.cmake
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE Result OUTPUT_VARIABLE Output ERROR_VARIABLE Output)
  if(NOT Result EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGV}\n${Output}")
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK}")
run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/installed")
file(RENAME "${WORK}/installed" "${WORK}/moved")
run("${CMAKE_COMMAND}" -S "${SOURCE}" -B "${WORK}/build" -G Ninja
    "-DCMAKE_PREFIX_PATH=${WORK}/moved" "-DCMAKE_CXX_COMPILER=${CXX}")
run("${CMAKE_COMMAND}" --build "${WORK}/build")
run("${WORK}/build/consumer")

# No file of the package may name a place of this machine.
file(GLOB_RECURSE Package "${WORK}/moved/*.cmake" "${WORK}/moved/*.pc")
foreach(File IN LISTS Package)
  file(READ "${File}" Text)
  string(FIND "${Text}" "${BUILD}" Found)
  if(NOT Found EQUAL -1)
    message(FATAL_ERROR "${File} names the build tree")
  endif()
endforeach()
