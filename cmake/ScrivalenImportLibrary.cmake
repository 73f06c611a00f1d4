# Makes Scrivalen.def and Scrivalen.lib, with which programs of any compiler for Windows link the DLL's C functions. The
# names come from the public header: each declaration begins its line with SCRIVALEN_API and names its function there.
function(scrivalen_import_library library header)
  find_program(SCRIVALEN_DLLTOOL NAMES llvm-dlltool "${CMAKE_DLLTOOL}")
  if(NOT SCRIVALEN_DLLTOOL)
    message(FATAL_ERROR "There is neither llvm-dlltool nor dlltool.")
  endif()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${header}")
  set(definition "LIBRARY $<TARGET_FILE_NAME:${library}>\nEXPORTS\n")
  file(STRINGS "${header}" declarations REGEX "^SCRIVALEN_API")
  foreach(declaration IN LISTS declarations)
    string(REGEX MATCH "(scrivalen_[a-z_]+)\\(" name "${declaration}")
    string(APPEND definition "  ${CMAKE_MATCH_1}\n")
  endforeach()
  set(file "${CMAKE_CURRENT_BINARY_DIR}/Scrivalen")
  file(GENERATE OUTPUT "${file}.def" CONTENT "${definition}")
  add_custom_command(OUTPUT "${file}.lib"
    COMMAND "${SCRIVALEN_DLLTOOL}" -m i386:x86-64 -d "${file}.def" -l "${file}.lib"
    DEPENDS "${file}.def" VERBATIM)
  add_custom_target(${library}_import_library ALL DEPENDS "${file}.lib")
endfunction()
