# Installs the library, the command and what finds them.
#
# The library looks for its templates and its help compiler beside its own file, with links resolved. On Linux it
# therefore has a folder of its own, and the library folder holds the versioned links that loaders and linkers find.
include(CMakePackageConfigHelpers)

set(headers_dir "${CMAKE_INSTALL_INCLUDEDIR}/scrivalen")
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/scrivalen")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

if(WIN32)
  set(home_dir "${CMAKE_INSTALL_BINDIR}")
else()
  set(home_dir "${CMAKE_INSTALL_LIBDIR}/scrivalen")
endif()

install(TARGETS scrivalen
  EXPORT scrivalenTargets
  RUNTIME DESTINATION "${home_dir}"
  LIBRARY DESTINATION "${home_dir}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/tmpl" DESTINATION "${home_dir}" FILES_MATCHING PATTERN "*.htm")

if(NOT WIN32)
  set(links_dir "${PROJECT_BINARY_DIR}/links")
  set(link libscrivalen.so)
  file(MAKE_DIRECTORY "${links_dir}")
  file(CREATE_LINK "scrivalen/${link}.${PROJECT_VERSION}" "${links_dir}/${link}.${PROJECT_VERSION_MAJOR}" SYMBOLIC)
  file(CREATE_LINK "${link}.${PROJECT_VERSION_MAJOR}" "${links_dir}/${link}" SYMBOLIC)
  install(FILES "${links_dir}/${link}.${PROJECT_VERSION_MAJOR}" "${links_dir}/${link}"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endif()
if(NOT WIN32)
  install(PROGRAMS "${PROJECT_SOURCE_DIR}/hhc/hhc.exe" DESTINATION "${home_dir}/hhc")
endif()

install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/scrivalen/" DESTINATION "${headers_dir}" FILES_MATCHING PATTERN "*.h")
install(FILES "${PROJECT_BINARY_DIR}/src/include/scrivalen/version.h" DESTINATION "${headers_dir}")

if(TARGET scrivalen_command)
  file(RELATIVE_PATH to_library "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
  set_target_properties(scrivalen_command PROPERTIES INSTALL_RPATH "$ORIGIN/${to_library}")
  install(TARGETS scrivalen_command RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()

install(EXPORT scrivalenTargets NAMESPACE scrivalen:: DESTINATION "${package_dir}")
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/scrivalenConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/package/scrivalenConfig.cmake"
  INSTALL_DESTINATION "${package_dir}"
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/scrivalenConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/package/scrivalenConfig.cmake"
  "${PROJECT_BINARY_DIR}/package/scrivalenConfigVersion.cmake"
  DESTINATION "${package_dir}")

# The prefix is told relative to the file's own folder, so that an installed tree may be moved.
file(RELATIVE_PATH to_prefix "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
get_target_property(link_name scrivalen OUTPUT_NAME)
if(NOT link_name)
  set(link_name scrivalen)
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/scrivalen.pc.in" "${PROJECT_BINARY_DIR}/package/scrivalen.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/scrivalen.pc" DESTINATION "${pkgconfig_dir}")

install(FILES
  "${PROJECT_SOURCE_DIR}/LICENSE"
  "${PROJECT_SOURCE_DIR}/THIRD_PARTY_NOTICES.md"
  DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(FILES "${PROJECT_SOURCE_DIR}/README.md" DESTINATION "${CMAKE_INSTALL_DOCDIR}" OPTIONAL)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" DESTINATION "${CMAKE_INSTALL_DOCDIR}")

# The Windows command contains libcsv, whose licence goes along with it.
if(WIN32 AND TARGET scrivalen_command)
  file(GLOB licence "${SCRIVALEN_SOURCES_DIR}/libcsv-*/COPYING.LESSER")
  install(FILES ${licence} DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME LGPL-2.1.txt)
endif()
