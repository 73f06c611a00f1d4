#pragma once

#include "support/pdf/pdf_pages.h"

#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen::test {

/// A text that a page draws at once. Lengths are points from the upper left corner of the page.
struct DrawnText {
  double x = 0;
  double baseline = 0;
  std::string font;  ///< its name without the letters of a subset
  double size = 0;
  std::uint32_t color = 0;  ///< 0xRRGGBB
  std::string text;         ///< UTF-8
};

struct DrawnArea {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
  std::uint32_t color = 0;
};

struct DrawnPage {
  double width = 0;
  double height = 0;
  std::vector<DrawnText> texts;
  std::vector<DrawnArea> areas;
  std::vector<PdfLink> links;
};

/// The pages of a PDF file with what is drawn on them. Whatever is wrong on the way fails the test.
std::vector<DrawnPage> drawnPages(const std::string& file);

/// The texts of a page, those with one baseline in a line, from left to right with " | " between them.
std::string linesOf(const DrawnPage& page);

/// The lines of all pages, each page after a line "--- 595x842".
std::string linesOf(const std::vector<DrawnPage>& pages);

/// The first text of the page that begins so; fails the test without one.
DrawnText textOn(const DrawnPage& page, const std::string& begin);

}  // namespace scrivalen::test
