# Runs an example in an empty folder and looks at how it ends and at what it leaves.
#
#   PROGRAM, EMULATOR   what to run, and with what; the emulator may be empty
#   FOLDER              where; made anew
#   ARGUMENT            of the program; may be empty
#   STATUS              the exit status it must have; 0 when not given
#   FILES               what it must leave, not empty, a comma between two
#   FULL                a file of the folder to which no byte can be written
#   OUTPUT, MESSAGES    texts that its standard output and its standard error must hold
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
  message(FATAL_ERROR "It ended with '${status}' instead of ${STATUS}.")
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
    message(FATAL_ERROR "Its ${name} does not hold '${wanted}'.")
  endif()
endfunction()
require_text(output "${output}" "${OUTPUT}")
require_text(messages "${messages}" "${MESSAGES}")
