#pragma once

#include "support/pdf/pdf_file_reader.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// Text that is drawn in one go. Lengths are in points, from the page's lower left corner.
struct PdfText {
  std::string text;  ///< UTF-8
  std::string font;  ///< its name without the letters of a subset
  double size = 0;
  double x = 0;
  double y = 0;             ///< of the baseline
  std::uint32_t color = 0;  ///< 0xRRGGBB
};

/// A filled rectangle.
struct PdfArea {
  double x = 0;
  double y = 0;  ///< of the lower edge
  double width = 0;
  double height = 0;
  std::uint32_t color = 0;
};

/// An image, with the box that it is drawn in unless it is turned.
struct PdfImageBox {
  int object = 0;  ///< its number
  double x = 0;
  double y = 0;  ///< of the lower edge
  double width = 0;
  double height = 0;
};

/// What a content stream draws.
struct PdfContent {
  std::vector<PdfText> texts;
  std::vector<PdfArea> areas;
  std::vector<PdfImageBox> images;
};

/// Reads a content stream, and the forms in it.
/// @param resources  of the page, with references or values
/// @param problems   gets what is wrong
PdfContent readPdfContent(const PdfFileReader& file, std::string_view content, const PdfValue& resources,
                          std::vector<std::string>& problems);

}  // namespace scrivalen::test
