# Runs the planner as a user would and checks exit code and messages.
#   cmake -DPLANNER=program -DDXF=ON -DWORK=folder -P CommandLineTest.cmake
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")

# expect(code pattern argument...): the planner exits with `code` and its output, errors included,
# matches `pattern`. A failure is one line on the error stream and nothing else.
function(expect Code Pattern)
  execute_process(COMMAND "${PLANNER}" ${ARGN} WORKING_DIRECTORY "${WORK}"
    RESULT_VARIABLE Result OUTPUT_VARIABLE Output ERROR_VARIABLE Errors)
  if(NOT Result STREQUAL Code)
    message(SEND_ERROR "${ARGN}: exit code ${Result}, expected ${Code}\n${Output}${Errors}")
  endif()
  if(NOT "${Output}${Errors}" MATCHES "${Pattern}")
    message(SEND_ERROR "${ARGN}: expected \"${Pattern}\" in\n${Output}${Errors}")
  endif()
  if(NOT Code EQUAL 0 AND NOT (Output STREQUAL "" AND "${Errors}" MATCHES "^sheet_planner: [^\n]+\n$"))
    message(SEND_ERROR "${ARGN}: not one line:\n${Output}${Errors}")
  endif()
endfunction()

expect(0 "Exit codes" --help)
expect(0 "sheet_planner [0-9]" --version)
expect(2 "a drawing or --sample")
expect(2 "no such sample: nothing" --sample nothing)
expect(2 "excludes" --sample plate drawing.dxf)
expect(2 "--unknown" --unknown)
expect(2 "--snap: must be a number" --sample plate --snap -1)
expect(2 "--max-scan: must be a number" --sample plate --max-scan nan)
expect(1 "cannot write " --sample plate --output "${WORK}/missing/plan.svg")

if(EXISTS /dev/full)
  execute_process(COMMAND "${PLANNER}" --sample squares WORKING_DIRECTORY "${WORK}"
    RESULT_VARIABLE Result OUTPUT_FILE /dev/full ERROR_QUIET)
  if(NOT Result EQUAL 1)
    message(SEND_ERROR "a report that cannot be written: exit code ${Result}, expected 1")
  endif()
endif()

expect(0 "picture  first.svg" --sample plate --output first.svg)
expect(0 "picture  plan.svg" --sample plate)
file(SHA256 "${WORK}/first.svg" First)
file(SHA256 "${WORK}/plan.svg" Second)
if(NOT First STREQUAL Second)
  message(SEND_ERROR "two runs wrote different pictures")
endif()
expect(0 "contour 1 .*closed" --sample brackets --list --max-scan 10)

if(DXF)
  expect(1 "missing.dxf: no such file" missing.dxf)
  expect(1 "a directory" "${WORK}")
  file(WRITE "${WORK}/prose.dxf" "Dear sir,\nplease cut this.\n")
  expect(1 "prose.dxf: not a sound DXF text: line 1" prose.dxf)
  file(WRITE "${WORK}/line.dxf"
    "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\nCuts\n10\n0\n20\n0\n11\n9\n21\n0\n0\nENDSEC\n0\nEOF\n")
  expect(0 "ports +0 Cuts.*flown +1  9.0" line.dxf --layers-as-ports)
  expect(2 "would overwrite the drawing" line.dxf --output ./line.dxf)

  # The drawing of the moves holds each curve of their file once, as what it is.
  expect(0 "" --sample plate --json moves.json --dxf moves.dxf)
  file(READ "${WORK}/moves.json" Moves)
  execute_process(COMMAND "${PLANNER}" moves.dxf WORKING_DIRECTORY "${WORK}" OUTPUT_VARIABLE Again)
  foreach(Pair "line LINE" "arc ARC" "circle CIRCLE" "bezier SPLINE")
    separate_arguments(Pair)
    list(GET Pair 0 Type)
    list(GET Pair 1 Entity)
    string(REGEX MATCHALL "\"type\": \"${Type}\"" Curves "${Moves}")
    list(LENGTH Curves Expected)
    string(REGEX MATCH "[ ]${Entity} ([0-9,]+)" Found "${Again}")
    string(REPLACE "," "" Read "${CMAKE_MATCH_1}")
    if(Expected EQUAL 0 OR NOT Read STREQUAL Expected)
      message(SEND_ERROR "${Expected} curves of type ${Type} became ${Read} of ${Entity}")
    endif()
  endforeach()
else()
  expect(1 "reads no DXF" drawing.dxf)
endif()
