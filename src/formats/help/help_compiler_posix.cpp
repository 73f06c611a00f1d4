#include "formats/help/help_compiler.h"

std::wstring_view scrivalen::formats::helpCompilerAdvice() {
  return L"The program hhc.exe, which comes with the library, belongs into the folder hhc beside the library's file, "
         L"or on the search path; it runs chmcmd, which the package fp-utils brings.";
}

bool scrivalen::formats::findsPagesInAnyProjectFolder() { return true; }
