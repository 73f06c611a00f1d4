# scrivalen_target(TARGET [STANDARD]): sets the options common to all targets of this project. The standard of C++ is 20,
# or an earlier one for what a host would compile.
function(scrivalen_target target)
  set(standard 20)
  if(ARGC GREATER 1)
    set(standard ${ARGV1})
  endif()
  target_compile_features(${target} PRIVATE cxx_std_${standard})
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    C_VISIBILITY_PRESET hidden
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  if(MSVC)
    target_compile_options(${target} PRIVATE /utf-8 /permissive-)
    if(SCRIVALEN_DEVELOPER_WARNINGS)
      target_compile_options(${target} PRIVATE /W4 /WX)
    endif()
  elseif(SCRIVALEN_DEVELOPER_WARNINGS)
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast> -Werror)
  endif()
  # Several sources in one translation unit, which saves the sanitizers' builds half of their time, see each other's names.
  # The other builds, which compile each by itself, have these warnings.
  if(CMAKE_UNITY_BUILD AND NOT MSVC)
    target_compile_options(${target} PRIVATE -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  endif()
  if(UNIX)
    # Lets the library call its own exported functions directly: no program replaces them.
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  endif()
  if(SCRIVALEN_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${SCRIVALEN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${SCRIVALEN_SANITIZE})
  endif()
endfunction()
