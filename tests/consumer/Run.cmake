# What `cmake --install` gives must be complete and relocatable: installs a build, moves the installed
# tree elsewhere and lets programs use it, through find_package and through pkg-config, with each
# compiler there is. With EMBED the build is made here, of a project that contains the library, and
# the library is shared and goes into the folder LIBDIR.
#   cmake -DBUILD=... -DWORK=... -DSOURCE=... -DCXX=... -P Run.cmake
#   cmake -DEMBED=... -DLIBDIR=... -DLAUNCHER=... -DWORK=... -DSOURCE=... -DCXX=... -P Run.cmake
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE Result OUTPUT_VARIABLE Output ERROR_VARIABLE Output)
  if(NOT Result EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGV}\n${Output}")
  endif()
  set(Output "${Output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE "${WORK}/moved" "${WORK}/use")
if(EMBED)
  set(BUILD "${WORK}/embedder")
  run("${CMAKE_COMMAND}" -S "${SOURCE}/embedded" -B "${BUILD}" -G Ninja "-DTARNALGO_SOURCE=${EMBED}"
      "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}"
      -DCMAKE_UNITY_BUILD=ON -DBUILD_SHARED_LIBS=ON "-DCMAKE_INSTALL_LIBDIR=${LIBDIR}")
  run("${CMAKE_COMMAND}" --build "${BUILD}")
  run("${BUILD}/consumer")
endif()
run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/installed")
file(RENAME "${WORK}/installed" "${WORK}/moved")

# No file of the package may name a place of this machine.
file(GLOB_RECURSE Package "${WORK}/moved/*.cmake" "${WORK}/moved/*.pc")
foreach(File IN LISTS Package)
  file(READ "${File}" Text)
  string(FIND "${Text}" "${BUILD}" Found)
  if(NOT Found EQUAL -1)
    message(FATAL_ERROR "${File} names the build tree")
  endif()
endforeach()

# Every header there, in one program: none needs a header that is not installed.
file(GLOB_RECURSE Headers RELATIVE "${WORK}/moved/include/tarnalgo" "${WORK}/moved/include/tarnalgo/*.h")
list(TRANSFORM Headers REPLACE "(.+)" "#include \"\\1\"\n")
list(JOIN Headers "" Headers)
file(WRITE "${WORK}/use/headers.cpp" "${Headers}")

file(GLOB_RECURSE PkgConfig "${WORK}/moved/*/tarnalgo.pc")
cmake_path(GET PkgConfig PARENT_PATH PkgConfig)
set(ENV{PKG_CONFIG_PATH} "${PkgConfig}")
run(pkg-config --exists "tarnalgo >= 0.1 tarnalgo < 0.2")
if(EMBED)
  run(pkg-config --cflags --libs tarnalgo)
  string(REGEX MATCH "-L([^ ]+)" Unused "${Output}")
  string(APPEND Output " -Wl,-rpath,${CMAKE_MATCH_1}")
else()
  run(pkg-config --static --cflags --libs tarnalgo)
endif()
separate_arguments(Flags UNIX_COMMAND "${Output}")

find_program(OTHER NAMES clang++)
set(Compilers "${CXX}" "${OTHER}")
list(REMOVE_DUPLICATES Compilers)
foreach(Compiler IN LISTS Compilers)
  if(NOT Compiler)
    message(STATUS "only one compiler here: used ${CXX} alone")
    continue()
  endif()
  cmake_path(GET Compiler FILENAME Name)
  set(Place "${WORK}/use/${Name}")
  run("${CMAKE_COMMAND}" -S "${SOURCE}" -B "${Place}" -G Ninja
      "-DCMAKE_PREFIX_PATH=${WORK}/moved" "-DCMAKE_CXX_COMPILER=${Compiler}")
  run("${CMAKE_COMMAND}" --build "${Place}")
  run("${Place}/consumer")
  run("${Compiler}" -std=c++20 "${SOURCE}/consumer.cpp" -o "${Place}/direct" ${Flags})
  run("${Place}/direct")
endforeach()
run("${CXX}" -std=c++20 -fsyntax-only "${WORK}/use/headers.cpp" ${Flags})
