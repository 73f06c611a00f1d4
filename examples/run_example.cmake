# Runs an example in an empty folder and checks its exit status and the files that it leaves.
#
#   PROGRAM, EMULATOR   the program and its emulator, which may be empty
#   FOLDER              the working folder, emptied first
#   ARGUMENT            the program's argument; may be empty
#   STATUS              the expected exit status; 0 by default
#   FILES               the files it must leave, not empty, separated by commas
#   FULL                a file in the folder whose disk is full
#   OUTPUT, MESSAGES    texts that must occur in its standard output and its standard error
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")
if(FULL)
  file(CREATE_LINK /dev/full "${FOLDER}/${FULL}" SYMBOLIC)
endif()

execute_process(COMMAND ${EMULATOR} "${PROGRAM}" ${ARGUMENT}
  WORKING_DIRECTORY "${FOLDER}" RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE messages)
message("${output}${messages}")

if(NOT STATUS)
  set(STATUS 0)
endif()
if(NOT status STREQUAL STATUS)
  message(FATAL_ERROR "It exited with '${status}' instead of ${STATUS}.")
endif()

string(REPLACE "," ";" files "${FILES}")
foreach(name IN LISTS files)
  if(NOT EXISTS "${FOLDER}/${name}")
    message(FATAL_ERROR "It left no ${name}.")
  endif()
  file(SIZE "${FOLDER}/${name}" size)
  if(size EQUAL 0)
    message(FATAL_ERROR "It left an empty ${name}.")
  endif()
endforeach()

function(require_text name text wanted)
  string(FIND "${text}" "${wanted}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "Its ${name} does not contain '${wanted}'.")
  endif()
endfunction()
require_text(output "${output}" "${OUTPUT}")
require_text(messages "${messages}" "${MESSAGES}")
