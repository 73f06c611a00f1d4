# The fonts that the library embeds in PDF documents. They come from Debian's packages when the library is configured, and
# are put into one folder with their licences: scrivalen_fonts_folder. Builds and installations copy that folder.
include_guard(GLOBAL)

set(SCRIVALEN_FONTS_DIR "/usr/share/fonts/truetype" CACHE PATH
  "Folder of the Liberation and DejaVu fonts, or the folder above theirs")

set(names "")
foreach(family IN ITEMS Serif Sans Mono)
  foreach(style IN ITEMS Regular Italic Bold BoldItalic)
    list(APPEND names "Liberation${family}-${style}.ttf")
  endforeach()
endforeach()
list(APPEND names DejaVuSans.ttf DejaVuSans-Oblique.ttf DejaVuSans-Bold.ttf DejaVuSans-BoldOblique.ttf)

set(scrivalen_fonts_folder "${PROJECT_BINARY_DIR}/fonts")
foreach(name IN LISTS names)
  # Later releases of Debian have one version of Liberation only.
  foreach(folder IN ITEMS . liberation2 liberation dejavu)
    set(file "${SCRIVALEN_FONTS_DIR}/${folder}/${name}")
    if(EXISTS "${file}")
      break()
    endif()
    set(file "")
  endforeach()
  if(NOT file)
    message(FATAL_ERROR "There is no ${name} in SCRIVALEN_FONTS_DIR, '${SCRIVALEN_FONTS_DIR}'. Debian's packages "
      "fonts-liberation2, fonts-dejavu-core and fonts-dejavu-extra have the fonts.")
  endif()
  configure_file("${file}" "${scrivalen_fonts_folder}/${name}" COPYONLY)
endforeach()
foreach(family IN ITEMS DejaVu Liberation)
  set(name "LICENSE-${family}.txt")
  configure_file("${PROJECT_SOURCE_DIR}/fonts/${name}" "${scrivalen_fonts_folder}/${name}" COPYONLY)
endforeach()
