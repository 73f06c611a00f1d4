#pragma once

#include "events/document.h"

#include <memory>
#include <string>
#include <string_view>

namespace scrivalen::command {

struct Format {
  std::string_view name;
  std::string_view extensions;  ///< in lower case, separated by blanks
  std::unique_ptr<DocumentWriter> (*createWriter)();
};

/// Finds a format by its name or by an extension without the dot, ignoring case. Returns null if there is none.
const Format* findFormat(std::string_view nameOrExtension);

/// All extensions, as ".txt .html ...".
std::string knownExtensions();

}  // namespace scrivalen::command
