#pragma once

#include "document/model/warnings.h"
#include "formats/help/document/code_page.h"
#include "formats/help/document/language.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::help {

// The names of the compiler's own files.
inline constexpr std::string_view kProjectName = "report.hhp";
inline constexpr std::string_view kContentsName = "report.hhc";
inline constexpr std::string_view kCompiledName = "report.chm";

/// An entry of the contents.
struct ContentsEntry {
  int level;         ///< 1 at the top; an entry is in the nearest one before it with a lower level
  std::string name;  ///< UTF-8
  std::string page;  ///< a file name, ASCII
};

struct Project {
  std::string_view title;  ///< UTF-8, one line
  const WindowsLanguage& language;
  const std::vector<std::string>& pages;     ///< file names, ASCII; the first is shown at the start
  const std::vector<std::string>& pictures;  ///< file names, ASCII
};

/// The bytes of a project file, in the code page of its language. The files are in its own folder.
/// @param warnings  gets one when letters of the title are missing from the code page
std::string projectFile(const Project& project, const CodePage& page, document::OutputWarnings& warnings);

/// The bytes of a contents file, in a code page.
std::string contentsFile(const std::vector<ContentsEntry>& entries, const CodePage& page);

}  // namespace scrivalen::help
