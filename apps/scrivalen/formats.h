#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// A format as users name it.
struct Format {
  const char* name;             ///< as the library has it
  std::string_view extensions;  ///< in lower case, the usual one first, with a blank between them
};

/// @param nameOrExtension  in any case, an extension without its point
/// @return null if there is no such format
const Format* findFormat(std::string_view nameOrExtension);

/// The names of all formats.
std::vector<std::string_view> formatNames();

/// The extensions of all formats, without points.
std::vector<std::string_view> formatExtensions();

}  // namespace scrivalen::command
