# Installs the library, the command and the files that locate them.
#
# The library looks for its templates, fonts and help compiler beside its own file, with links resolved. On Linux it
# therefore has a folder of its own, and the library folder holds the versioned links that loaders and linkers find. A
# static library looks beside the program that it is linked into.
include(CMakePackageConfigHelpers)

set(headers_dir "${CMAKE_INSTALL_INCLUDEDIR}/scrivalen")
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/scrivalen")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

if(WIN32 OR NOT BUILD_SHARED_LIBS)
  set(home_dir "${CMAKE_INSTALL_BINDIR}")
else()
  set(home_dir "${CMAKE_INSTALL_LIBDIR}/scrivalen")
endif()

install(TARGETS scrivalen
  EXPORT scrivalenTargets
  RUNTIME DESTINATION "${home_dir}" COMPONENT Runtime
  LIBRARY DESTINATION "${home_dir}" COMPONENT Runtime
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Development)
if(TARGET scrivalen_import_library)
  install(FILES "${PROJECT_BINARY_DIR}/src/Scrivalen.def" "${PROJECT_BINARY_DIR}/src/Scrivalen.lib"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Development)
endif()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/tmpl" DESTINATION "${home_dir}" COMPONENT Runtime
  FILES_MATCHING PATTERN "*.htm")
install(DIRECTORY "${scrivalen_fonts_folder}" DESTINATION "${home_dir}" COMPONENT Runtime)

if(BUILD_SHARED_LIBS AND NOT WIN32)
  set(links_dir "${PROJECT_BINARY_DIR}/links")
  set(link libscrivalen.so)
  file(MAKE_DIRECTORY "${links_dir}")
  file(CREATE_LINK "scrivalen/${link}.${PROJECT_VERSION}" "${links_dir}/${link}.${PROJECT_VERSION_MAJOR}" SYMBOLIC)
  file(CREATE_LINK "${link}.${PROJECT_VERSION_MAJOR}" "${links_dir}/${link}" SYMBOLIC)
  install(FILES "${links_dir}/${link}.${PROJECT_VERSION_MAJOR}"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Runtime)
  install(FILES "${links_dir}/${link}" DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Development)
endif()
if(NOT WIN32)
  install(PROGRAMS "${PROJECT_SOURCE_DIR}/hhc/hhc.exe" DESTINATION "${home_dir}/hhc" COMPONENT Runtime)
endif()

install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/scrivalen/" DESTINATION "${headers_dir}"
  COMPONENT Development FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
install(FILES "${PROJECT_BINARY_DIR}/src/include/scrivalen/version.h" DESTINATION "${headers_dir}"
  COMPONENT Development)

if(TARGET scrivalen_command)
  file(RELATIVE_PATH to_library "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
  set_target_properties(scrivalen_command PROPERTIES INSTALL_RPATH "$ORIGIN/${to_library}")
  install(TARGETS scrivalen_command RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Command)
endif()

# Where the manual and the shells look for them. Shells do not look below another prefix; users link the files there.
if(TARGET scrivalen_page_files)
  set(pages_dir "${PROJECT_BINARY_DIR}/pages")
  install(FILES "${pages_dir}/man/scrivalen.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT Command)
  install(FILES "${pages_dir}/bash/scrivalen" DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions"
    COMPONENT Command)
  install(FILES "${pages_dir}/zsh/_scrivalen" DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions"
    COMPONENT Command)
  install(FILES "${pages_dir}/fish/scrivalen.fish" DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d"
    COMPONENT Command)
endif()

install(EXPORT scrivalenTargets NAMESPACE scrivalen:: DESTINATION "${package_dir}"
  COMPONENT Development)
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/scrivalenConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/package/scrivalenConfig.cmake"
  INSTALL_DESTINATION "${package_dir}"
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/scrivalenConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/package/scrivalenConfig.cmake"
  "${PROJECT_BINARY_DIR}/package/scrivalenConfigVersion.cmake"
  DESTINATION "${package_dir}" COMPONENT Development)

# The prefix is relative to the file's folder, so that an installed tree can be moved.
file(RELATIVE_PATH to_prefix "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
get_target_property(link_name scrivalen OUTPUT_NAME)
if(NOT link_name)
  set(link_name scrivalen)
endif()
foreach(kind IN ITEMS LIB INCLUDE)
  string(TOLOWER "pc_${kind}dir" variable)
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${kind}DIR}")
    set(${variable} "${CMAKE_INSTALL_${kind}DIR}")
  else()
    set(${variable} "\${prefix}/${CMAKE_INSTALL_${kind}DIR}")
  endif()
endforeach()
set(pc_libraries "")
set(pc_definitions "")
if(NOT BUILD_SHARED_LIBS)
  foreach(library IN LISTS scrivalen_static_libraries)
    string(APPEND pc_libraries " -l${library}")
  endforeach()
  string(APPEND pc_libraries " -lstdc++ -lm")
  set(pc_definitions " -DSCRIVALEN_STATIC")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/scrivalen.pc.in" "${PROJECT_BINARY_DIR}/package/scrivalen.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/scrivalen.pc" DESTINATION "${pkgconfig_dir}" COMPONENT Development)

# Installs the documents with everything that they link to.
install(FILES
  "${PROJECT_SOURCE_DIR}/LICENSE"
  "${PROJECT_SOURCE_DIR}/THIRD_PARTY_NOTICES.md"
  DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Runtime)
install(FILES
  "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
  "${PROJECT_SOURCE_DIR}/CONTRIBUTING.md"
  "${PROJECT_SOURCE_DIR}/README.md"
  DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" "${PROJECT_SOURCE_DIR}/examples"
  DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Development)

# The Windows library contains FriBidi and the command libcsv, so their licence is installed too.
if(WIN32)
  file(GLOB licence "${SCRIVALEN_SOURCES_DIR}/fribidi-*/COPYING")
  install(FILES ${licence} DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Runtime RENAME LGPL-2.1.txt)
endif()
