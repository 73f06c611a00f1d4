# Runs two examples, each in an empty folder, and checks that they write the same files and print the same.
#
#   PROGRAMS   the two programs, separated by a comma
#   EMULATOR   their emulator, which may be empty
#   FOLDER     the folder of their folders, emptied first
string(REPLACE "," ";" programs "${PROGRAMS}")
file(REMOVE_RECURSE "${FOLDER}")

set(number 0)
foreach(program IN LISTS programs)
  math(EXPR number "${number} + 1")
  set(folder "${FOLDER}/${number}")
  file(MAKE_DIRECTORY "${folder}")
  execute_process(COMMAND ${EMULATOR} "${program}"
    WORKING_DIRECTORY "${folder}" RESULT_VARIABLE status OUTPUT_VARIABLE output_${number} ERROR_VARIABLE messages)
  if(NOT status STREQUAL "0")
    message(FATAL_ERROR "${program} exited with '${status}': ${messages}")
  endif()
  file(GLOB files_${number} RELATIVE "${folder}" "${folder}/*")
endforeach()

if(NOT number EQUAL 2 OR NOT files_1)
  message(FATAL_ERROR "There is nothing to compare.")
endif()
if(NOT files_1 STREQUAL files_2 OR NOT output_1 STREQUAL output_2)
  message(FATAL_ERROR "The first wrote '${files_1}' and printed '${output_1}', the second '${files_2}' and '${output_2}'.")
endif()
foreach(name IN LISTS files_1)
  file(SIZE "${FOLDER}/1/${name}" size)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${FOLDER}/1/${name}" "${FOLDER}/2/${name}"
    RESULT_VARIABLE differs)
  if(size EQUAL 0 OR differs)
    message(FATAL_ERROR "The files ${name} are empty, or differ.")
  endif()
  message("${name}: the same ${size} bytes")
endforeach()
