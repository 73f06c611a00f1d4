#pragma once

#include "document.h"

#include <memory>
#include <string>
#include <string_view>

namespace scrivalen::command {

struct Format {
  std::string_view name;
  std::string_view extensions;                        ///< in lower case, one blank between two
  std::unique_ptr<DocumentWriter> (*createWriter)();  ///< null: a format that this build cannot write
};

/// The format of a name or an extension without its dot, in any case of letters; null when there is none.
const Format* findFormat(std::string_view nameOrExtension);

/// The formats that can be written, as ".txt .html ...".
std::string writableExtensions();

}  // namespace scrivalen::command
