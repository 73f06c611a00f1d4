# The libraries that the command is built with: scrivalen_md4c for Markdown, scrivalen_csv for CSV, scrivalen_cli11 for
# its options. They are the system's, or are compiled from sources in SCRIVALEN_SOURCES_DIR where there are no packages.

# Finds one file by a pattern below SCRIVALEN_SOURCES_DIR.
function(scrivalen_find_source result pattern)
  file(GLOB found LIST_DIRECTORIES false "${SCRIVALEN_SOURCES_DIR}/${pattern}")
  if(NOT found)
    message(FATAL_ERROR "There is no ${pattern} in SCRIVALEN_SOURCES_DIR, '${SCRIVALEN_SOURCES_DIR}'.")
  endif()
  list(GET found 0 first)
  set(${result} "${first}" PARENT_SCOPE)
endfunction()

# Compiles a library of one C file, whose header stands beside it.
function(scrivalen_library_from_source target pattern)
  scrivalen_find_source(source "${pattern}")
  get_filename_component(folder "${source}" DIRECTORY)
  add_library(${target} STATIC "${source}")
  set_target_properties(${target} PROPERTIES C_VISIBILITY_PRESET hidden POSITION_INDEPENDENT_CODE ON)
  target_include_directories(${target} SYSTEM INTERFACE "${folder}")
endfunction()

# Takes a library of the system.
function(scrivalen_library_of_system target library header)
  find_path(${target}_INCLUDE_DIR ${header} REQUIRED)
  find_library(${target}_LIBRARY ${library} REQUIRED)
  mark_as_advanced(${target}_INCLUDE_DIR ${target}_LIBRARY)
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE "${${target}_INCLUDE_DIR}")
  target_link_libraries(${target} INTERFACE "${${target}_LIBRARY}")
endfunction()

if(SCRIVALEN_SOURCES_DIR)
  scrivalen_library_from_source(scrivalen_md4c "md4c-*/src/md4c.c")
  scrivalen_library_from_source(scrivalen_csv "libcsv-*/libcsv.c")
else()
  scrivalen_library_of_system(scrivalen_md4c md4c md4c.h)
  scrivalen_library_of_system(scrivalen_csv csv csv.h)
endif()

# Headers only, the same for every system. A cross build gets them through a folder of their own, because the folder
# that they stand in holds the building system's headers too.
find_path(scrivalen_cli11_INCLUDE_DIR CLI/CLI.hpp REQUIRED NO_CMAKE_FIND_ROOT_PATH)
mark_as_advanced(scrivalen_cli11_INCLUDE_DIR)
add_library(scrivalen_cli11 INTERFACE)
if(CMAKE_CROSSCOMPILING)
  set(folder "${CMAKE_BINARY_DIR}/deps")
  file(MAKE_DIRECTORY "${folder}")
  file(CREATE_LINK "${scrivalen_cli11_INCLUDE_DIR}/CLI" "${folder}/CLI" COPY_ON_ERROR SYMBOLIC)
  target_include_directories(scrivalen_cli11 SYSTEM INTERFACE "${folder}")
else()
  target_include_directories(scrivalen_cli11 SYSTEM INTERFACE "${scrivalen_cli11_INCLUDE_DIR}")
endif()
