# Checks the C, C++ and Python excerpts in the documents: each must occur unchanged in an example, so that it compiles, or
# runs.
#
#   DOCUMENTS, EXAMPLES   the files, separated by commas
string(REPLACE "," ";" documents "${DOCUMENTS}")
string(REPLACE "," ";" examples "${EXAMPLES}")

set(code "")
foreach(example IN LISTS examples)
  file(READ "${example}" text)
  string(APPEND code "${text}")
endforeach()

set(count 0)
foreach(document IN LISTS documents)
  foreach(fence IN ITEMS "```cpp\n" "```c\n" "```python\n")
    file(READ "${document}" rest)
    string(FIND "${rest}" "${fence}" begin)
    while(NOT begin EQUAL -1)
      string(LENGTH "${fence}" fence_length)
      math(EXPR begin "${begin} + ${fence_length}")
      string(SUBSTRING "${rest}" ${begin} -1 rest)
      string(FIND "${rest}" "```" end)
      string(SUBSTRING "${rest}" 0 ${end} excerpt)
      string(FIND "${code}" "${excerpt}" at)
      if(at EQUAL -1)
        message(FATAL_ERROR "This excerpt of ${document} is in no example:\n${excerpt}")
      endif()
      math(EXPR count "${count} + 1")
      string(SUBSTRING "${rest}" ${end} -1 rest)
      string(FIND "${rest}" "${fence}" begin)
    endwhile()
  endforeach()
endforeach()

if(count EQUAL 0)
  message(FATAL_ERROR "There is no excerpt in ${DOCUMENTS}.")
endif()
message("All ${count} excerpts are in the examples.")
