#pragma once

#include "document/model/table.h"

#include <string>

namespace scrivalen::document {

/// What a cell shows in a format that has pictures.
struct ShownCell {
  std::string text;           ///< without the texts for readers who do not see a picture
  double widestPicture = 0;   ///< in points; 0: it has none
  double widestPictures = 0;  ///< of those in one line, with the text beside them, in points
};

ShownCell shownCell(const Cell& cell);

}  // namespace scrivalen::document
