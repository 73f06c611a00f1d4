#pragma once

#include <string>
#include <string_view>

namespace scrivalen::command {

/// A format as users name it.
struct Format {
  const char* name;             ///< as the library has it
  std::string_view extensions;  ///< in lower case, with a blank between them
};

/// @param nameOrExtension  in any case, an extension without its point
/// @return null if there is no such format
const Format* findFormat(std::string_view nameOrExtension);

/// The extensions of all formats, for messages: ".txt .html ...".
std::string knownExtensions();

}  // namespace scrivalen::command
