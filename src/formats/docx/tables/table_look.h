#pragma once

#include <string>

namespace scrivalen::document::docx {

/// What tables of a document with a reference have beside their style.
struct TableLook {
  std::string headerShade;  ///< the element of the shade of header rows that are not the first; may be empty
  bool hasBands = false;    ///< whether every second row may look different
  double letterWidth = 1;   ///< how wide letters may be, relative to Arial in the usual size
};

}  // namespace scrivalen::document::docx
