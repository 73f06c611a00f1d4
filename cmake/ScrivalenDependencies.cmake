# The libraries that the library and the command need. They are the system's or, where there are no packages, compiled
# from sources in SCRIVALEN_SOURCES_DIR. The library uses scrivalen_zlib for archives and pictures, scrivalen_deflate and
# scrivalen_zlib to compress PDF files, scrivalen_harfbuzz for fonts, scrivalen_fribidi for the order of text and
# scrivalen_expat to read the styles of Word documents; scrivalen_use_command_dependencies defines the libraries that the
# command needs in addition, and scrivalen_use_xlsxwriter the one that tests and benchmarks compare spreadsheets with.
include_guard(GLOBAL)

# Finds one file by a pattern below SCRIVALEN_SOURCES_DIR.
function(scrivalen_find_source result pattern)
  file(GLOB found LIST_DIRECTORIES false "${SCRIVALEN_SOURCES_DIR}/${pattern}")
  if(NOT found)
    message(FATAL_ERROR "There is no ${pattern} in SCRIVALEN_SOURCES_DIR, '${SCRIVALEN_SOURCES_DIR}'.")
  endif()
  list(GET found 0 first)
  set(${result} "${first}" PARENT_SCOPE)
endfunction()

# Compiles a library of one C file, with its header in the same folder.
function(scrivalen_library_from_source target pattern)
  scrivalen_find_source(source "${pattern}")
  get_filename_component(folder "${source}" DIRECTORY)
  add_library(${target} STATIC "${source}")
  set_target_properties(${target} PROPERTIES C_VISIBILITY_PRESET hidden POSITION_INDEPENDENT_CODE ON)
  target_include_directories(${target} SYSTEM INTERFACE "${folder}")
endfunction()

# scrivalen_library_of_system(TARGET LIBRARY HEADER [FOLDER]): defines a library of the system, whose header may be in a
# folder of its own.
function(scrivalen_library_of_system target library header)
  find_path(${target}_INCLUDE_DIR ${header} PATH_SUFFIXES ${ARGN} REQUIRED)
  find_library(${target}_LIBRARY ${library} REQUIRED)
  mark_as_advanced(${target}_INCLUDE_DIR ${target}_LIBRARY)
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE "${${target}_INCLUDE_DIR}")
  target_link_libraries(${target} INTERFACE "${${target}_LIBRARY}")
endfunction()

# Looks for the static file by name: an import library could be found first.
function(scrivalen_static_zlib)
  find_library(scrivalen_zlib_LIBRARY libz.a REQUIRED)
  find_path(scrivalen_zlib_INCLUDE_DIR zlib.h REQUIRED)
  mark_as_advanced(scrivalen_zlib_LIBRARY scrivalen_zlib_INCLUDE_DIR)
  add_library(scrivalen_zlib INTERFACE)
  target_include_directories(scrivalen_zlib SYSTEM INTERFACE "${scrivalen_zlib_INCLUDE_DIR}")
  target_link_libraries(scrivalen_zlib INTERFACE "${scrivalen_zlib_LIBRARY}")
endfunction()

# Compiles the parser of libyaml. Its version is defined by its build, which is not used.
function(scrivalen_yaml_from_source)
  scrivalen_find_source(parser "libyaml-*/src/parser.c")
  get_filename_component(folder "${parser}" DIRECTORY)
  add_library(scrivalen_yaml STATIC
    "${folder}/api.c" "${folder}/parser.c" "${folder}/reader.c" "${folder}/scanner.c")
  # The files define macros of the same names, so each is compiled separately.
  set_target_properties(scrivalen_yaml PROPERTIES
    C_VISIBILITY_PRESET hidden POSITION_INDEPENDENT_CODE ON UNITY_BUILD OFF)
  target_compile_definitions(scrivalen_yaml
    PUBLIC YAML_DECLARE_STATIC
    PRIVATE YAML_VERSION_MAJOR=0 YAML_VERSION_MINOR=2 YAML_VERSION_PATCH=5 YAML_VERSION_STRING="0.2.5")
  target_include_directories(scrivalen_yaml SYSTEM PUBLIC "${folder}/../include")
endfunction()

if(CMAKE_CROSSCOMPILING)
  scrivalen_static_zlib()
else()
  find_package(ZLIB REQUIRED)
  add_library(scrivalen_zlib INTERFACE)
  target_link_libraries(scrivalen_zlib INTERFACE ZLIB::ZLIB)
endif()

# HarfBuzz shapes text and makes subsets of fonts.
function(scrivalen_harfbuzz_of_system)
  find_path(scrivalen_harfbuzz_INCLUDE_DIR hb-subset.h PATH_SUFFIXES harfbuzz REQUIRED)
  find_library(scrivalen_harfbuzz_LIBRARY harfbuzz REQUIRED)
  find_library(scrivalen_harfbuzz_subset_LIBRARY harfbuzz-subset REQUIRED)
  mark_as_advanced(scrivalen_harfbuzz_INCLUDE_DIR scrivalen_harfbuzz_LIBRARY scrivalen_harfbuzz_subset_LIBRARY)
  add_library(scrivalen_harfbuzz INTERFACE)
  target_include_directories(scrivalen_harfbuzz SYSTEM INTERFACE "${scrivalen_harfbuzz_INCLUDE_DIR}")
  target_link_libraries(scrivalen_harfbuzz INTERFACE
    "${scrivalen_harfbuzz_subset_LIBRARY}" "${scrivalen_harfbuzz_LIBRARY}")
endfunction()

# One file is the whole library. Here it reads no files, no environment and no locale: it gets fonts as bytes. It takes a
# minute to compile, so it has no debug information, which would take longer.
function(scrivalen_harfbuzz_from_source)
  scrivalen_find_source(source "harfbuzz-*/src/harfbuzz-subset.cc")
  get_filename_component(folder "${source}" DIRECTORY)
  add_library(scrivalen_harfbuzz STATIC "${source}")
  target_compile_features(scrivalen_harfbuzz PRIVATE cxx_std_11)
  set_target_properties(scrivalen_harfbuzz PROPERTIES
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON POSITION_INDEPENDENT_CODE ON UNITY_BUILD OFF)
  target_compile_definitions(scrivalen_harfbuzz PRIVATE
    HB_DISABLE_DEPRECATED HB_NO_GETENV HB_NO_MMAP HB_NO_OPEN HB_NO_SETLOCALE)
  if(MSVC)
    target_compile_options(scrivalen_harfbuzz PRIVATE /bigobj)
  else()
    target_compile_options(scrivalen_harfbuzz PRIVATE -O2 -g0 -w -fno-exceptions -fno-rtti -fno-threadsafe-statics)
  endif()
  target_include_directories(scrivalen_harfbuzz SYSTEM INTERFACE "${folder}")
endfunction()

# Compiles FriBidi with the tables that its source package has ready.
function(scrivalen_fribidi_from_source)
  scrivalen_find_source(source "fribidi-*/lib/fribidi.c")
  get_filename_component(folder "${source}" DIRECTORY)
  string(REGEX MATCH "fribidi-(([0-9]+)\\.([0-9]+)\\.([0-9]+))" PACKAGE_NAME "${folder}")
  set(PACKAGE fribidi)
  set(FRIBIDI_VERSION "${CMAKE_MATCH_1}")
  set(FRIBIDI_MAJOR_VERSION "${CMAKE_MATCH_2}")
  set(FRIBIDI_MINOR_VERSION "${CMAKE_MATCH_3}")
  set(FRIBIDI_MICRO_VERSION "${CMAKE_MATCH_4}")
  set(FRIBIDI_INTERFACE_VERSION 4)
  set(SIZEOF_INT 4)
  set(config_folder "${CMAKE_CURRENT_BINARY_DIR}/fribidi")
  configure_file("${folder}/fribidi-config.h.in" "${config_folder}/fribidi-config.h" @ONLY)

  file(GLOB sources "${folder}/*.c")
  add_library(scrivalen_fribidi STATIC ${sources})
  set_target_properties(scrivalen_fribidi PROPERTIES
    C_VISIBILITY_PRESET hidden POSITION_INDEPENDENT_CODE ON UNITY_BUILD OFF)
  # FriBidi 1.0.9 and later have the second name for the first one.
  target_compile_definitions(scrivalen_fribidi
    PUBLIC FRIBIDI_STATIC FRIBIDI_LIB_STATIC
    PRIVATE HAVE_MEMORY_H HAVE_STDLIB_H HAVE_STRING_H HAVE_STRINGIZE STDC_HEADERS)
  if(NOT MSVC)
    target_compile_options(scrivalen_fribidi PRIVATE -w)
  endif()
  target_include_directories(scrivalen_fribidi SYSTEM PUBLIC "${folder}" "${config_folder}")
endfunction()

# Compiles the parts of libdeflate that compress in the zlib format or compute a CRC-32.
function(scrivalen_deflate_from_source)
  scrivalen_find_source(header "libdeflate-*/libdeflate.h")
  get_filename_component(folder "${header}" DIRECTORY)
  add_library(scrivalen_deflate STATIC
    "${folder}/lib/adler32.c" "${folder}/lib/crc32.c" "${folder}/lib/deflate_compress.c" "${folder}/lib/utils.c"
    "${folder}/lib/zlib_compress.c" "${folder}/lib/arm/cpu_features.c" "${folder}/lib/x86/cpu_features.c")
  # The files define macros of the same names, so each is compiled separately.
  set_target_properties(scrivalen_deflate PROPERTIES
    C_VISIBILITY_PRESET hidden POSITION_INDEPENDENT_CODE ON UNITY_BUILD OFF)
  target_include_directories(scrivalen_deflate SYSTEM PUBLIC "${folder}")
endfunction()

# Compiles Expat without external entities. Its build makes a header of settings, which are definitions here.
function(scrivalen_expat_from_source)
  scrivalen_find_source(source "expat-*/expat/lib/xmlparse.c")
  get_filename_component(folder "${source}" DIRECTORY)
  set(config_folder "${CMAKE_CURRENT_BINARY_DIR}/expat")
  file(CONFIGURE OUTPUT "${config_folder}/expat_config.h" CONTENT "")

  add_library(scrivalen_expat STATIC "${folder}/xmlparse.c" "${folder}/xmlrole.c" "${folder}/xmltok.c")
  # The files define macros of the same names, so each is compiled separately.
  set_target_properties(scrivalen_expat PROPERTIES
    C_VISIBILITY_PRESET hidden POSITION_INDEPENDENT_CODE ON UNITY_BUILD OFF)
  target_compile_definitions(scrivalen_expat
    PUBLIC XML_STATIC
    PRIVATE BYTEORDER=1234 XML_CONTEXT_BYTES=1024 XML_NS $<$<NOT:$<PLATFORM_ID:Windows>>:XML_DEV_URANDOM>)
  if(NOT MSVC)
    target_compile_options(scrivalen_expat PRIVATE -w)
  endif()
  target_include_directories(scrivalen_expat SYSTEM PUBLIC "${folder}" PRIVATE "${config_folder}")
endfunction()

if(SCRIVALEN_SOURCES_DIR)
  scrivalen_harfbuzz_from_source()
  scrivalen_fribidi_from_source()
  scrivalen_deflate_from_source()
  scrivalen_expat_from_source()
else()
  scrivalen_harfbuzz_of_system()
  scrivalen_library_of_system(scrivalen_fribidi fribidi fribidi.h fribidi)
  scrivalen_library_of_system(scrivalen_deflate deflate libdeflate.h)
  scrivalen_library_of_system(scrivalen_expat expat expat.h)
endif()

# scrivalen_md4c for Markdown, scrivalen_yaml for its front matter, scrivalen_csv for CSV, scrivalen_cli11 for the
# options.
function(scrivalen_use_command_dependencies)
  if(SCRIVALEN_SOURCES_DIR)
    scrivalen_library_from_source(scrivalen_md4c "md4c-*/src/md4c.c")
    scrivalen_library_from_source(scrivalen_csv "libcsv-*/libcsv.c")
    scrivalen_yaml_from_source()
  else()
    scrivalen_library_of_system(scrivalen_md4c md4c md4c.h)
    scrivalen_library_of_system(scrivalen_csv csv csv.h)
    scrivalen_library_of_system(scrivalen_yaml yaml yaml.h)
  endif()

  # Headers only, the same for every system. A cross build gets them in a folder of their own, because the folder they
  # are installed in also holds the build machine's headers.
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
endfunction()

# The system's, because the tests and benchmarks that use it run on Linux only.
function(scrivalen_use_xlsxwriter)
  if(NOT TARGET scrivalen_xlsxwriter)
    scrivalen_library_of_system(scrivalen_xlsxwriter xlsxwriter xlsxwriter.h)
  endif()
endfunction()
