# Helpers for the targets of this project. What they set stays private to the build: who links the
# library gets no flag from here.

# Warnings, sanitizers and the floating-point contract for code of our own.
function(tarnalgo_own_code Target)
  target_compile_options(${Target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    -ffp-contract=off  # a fused multiply-add would make a vector's cross product with itself not 0
    $<$<BOOL:${TARNALGO_WERROR}>:-Werror>
    $<$<BOOL:${TARNALGO_FUZZ_COVERAGE}>:-fsanitize=fuzzer-no-link>)
  if(TARNALGO_SANITIZE)
    target_compile_options(${Target} PRIVATE
      -fsanitize=${TARNALGO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${Target} PRIVATE -fsanitize=${TARNALGO_SANITIZE})
  endif()
endfunction()

# Sources and public headers of one folder of the library, named relative to that folder. With
# CMAKE_UNITY_BUILD the sources of one subfolder are compiled as one file.
#   tarnalgo_unit(HEADERS a.h ... SOURCES a.cpp ...)
function(tarnalgo_unit)
  cmake_parse_arguments(UNIT "" "" "HEADERS;SOURCES" ${ARGN})
  foreach(Source IN LISTS UNIT_SOURCES)
    cmake_path(GET Source PARENT_PATH Folder)
    string(REPLACE "/" "_" Group "unit_${Folder}")
    set_source_files_properties(${Source} TARGET_DIRECTORY tarnalgo PROPERTIES UNITY_GROUP ${Group})
  endforeach()
  list(TRANSFORM UNIT_HEADERS PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  list(TRANSFORM UNIT_SOURCES PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR PARENT_PATH Base)
  target_sources(tarnalgo
    PRIVATE ${UNIT_SOURCES}
    PUBLIC FILE_SET HEADERS BASE_DIRS "${Base}" FILES ${UNIT_HEADERS})
endfunction()

# One test binary for a unit: tarnalgo_test(Name file.cpp ...). ctest runs it as one test.
function(tarnalgo_test Name)
  add_executable(${Name} ${ARGN})
  tarnalgo_own_code(${Name})
  target_link_libraries(${Name} PRIVATE tarnalgo::tarnalgo GTest::gmock GTest::gtest_main)
  target_include_directories(${Name} PRIVATE "${PROJECT_SOURCE_DIR}")
  if(TARNALGO_PRECOMPILE)
    get_property(First GLOBAL PROPERTY TARNALGO_FIRST_TEST)
    if(First)
      target_precompile_headers(${Name} REUSE_FROM ${First})
    else()
      target_precompile_headers(${Name} PRIVATE <gmock/gmock.h> <gtest/gtest.h>
        <algorithm> <cmath> <functional> <memory> <optional> <random> <string> <vector>)
      set_property(GLOBAL PROPERTY TARNALGO_FIRST_TEST ${Name})
    endif()
  endif()
  add_test(NAME ${Name} COMMAND ${Name})
  set_tests_properties(${Name} PROPERTIES TIMEOUT 300)
endfunction()

# One benchmark program: tarnalgo_bench(Name file.cpp ...).
function(tarnalgo_bench Name)
  add_executable(${Name} ${ARGN})
  tarnalgo_own_code(${Name})
  target_link_libraries(${Name} PRIVATE tarnalgo::tarnalgo benchmark::benchmark_main)
endfunction()
