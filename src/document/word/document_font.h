#pragma once

#include "document/model/warnings.h"

#include <string_view>

namespace scrivalen::document {

/// The font of a document's text in a word processor's file.
struct DocumentFont {
  enum class Kind { Serif, Sans, Mono, Own };

  Kind kind;
  std::string_view name;  ///< of an own one, from the setting; at most 31 UTF-16 units, because Word takes no more

  /// @param setting   "font"; must outlive the result
  /// @param warnings  gets one about a name that is cut
  static DocumentFont of(std::string_view setting, OutputWarnings& warnings);
};

}  // namespace scrivalen::document
