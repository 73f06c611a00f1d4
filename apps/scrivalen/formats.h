#pragma once

#include "document/document.h"

#include <memory>
#include <string>
#include <string_view>

namespace scrivalen::command {

struct Format {
  std::string_view name;
  std::string_view extensions;  ///< in lower case, one blank between two
  std::unique_ptr<DocumentWriter> (*createWriter)();
};

/// The format of a name or an extension without its dot, in any case of letters; null when there is none.
const Format* findFormat(std::string_view nameOrExtension);

/// All extensions, as ".txt .html ...".
std::string knownExtensions();

}  // namespace scrivalen::command
