#include "formats/help/help_compiler.h"

std::wstring_view scrivalen::formats::helpCompilerAdvice() {
  return L"Install the HTML Help compiler: hhc.exe belongs into the folder hhc beside the library, or on the search "
         L"path.";
}

bool scrivalen::formats::findsPagesInAnyProjectFolder() { return false; }
