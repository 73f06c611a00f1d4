#pragma once

#include "formats/pdf/typeset/pdf_objects.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// A text of a font for WinAnsi, in points from the lower left corner of the page.
struct ShownText {
  std::string text;  ///< WinAnsi, without the adjustments between its letters
  double x = 0;
  double y = 0;  ///< of the baseline
  std::string font;
  double size = 0;
  std::string color;  ///< the operands of "g" or "rg"
};

/// A filled rectangle.
struct ShownArea {
  double x = 0;
  double y = 0;  ///< of its lower edge
  double width = 0;
  double height = 0;
  std::string color;
};

/// An image; its box is in points.
struct ShownImage {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
};

struct ShownLink {
  std::vector<double> box;
  std::string target;  ///< an address, or "#" and the name of a place
};

/// What a page shows, in the order of its content. The content of forms is part of that of their pages.
struct ShownPage {
  int object = 0;
  std::vector<double> box;
  std::vector<ShownText> texts;
  std::vector<ShownArea> areas;
  std::vector<ShownImage> images;
  std::vector<ShownLink> links;

  /// The texts with blanks between them.
  std::string all() const;
  /// The first text that contains another; fails the test without one.
  ShownText find(std::string_view part) const;
  bool has(std::string_view part) const { return all().find(part) != std::string::npos; }
  /// The texts on the baseline of a text, from left to right.
  std::vector<ShownText> lineOf(std::string_view part) const;
  /// The areas of a colour.
  std::vector<ShownArea> areasOf(std::string_view color) const;
};

/// The pages of a PDF file as a reader shows them.
class ShownPages {
 public:
  explicit ShownPages(const std::string& file);

  const PdfObjects& objects() const { return objects_; }
  std::string catalog() const { return objects_.object(numberAfter(objects_.trailer(), "/Root ")); }
  std::string information() const { return objects_.object(numberAfter(objects_.trailer(), "/Info ")); }
  std::size_t count() const { return pages_.size(); }
  const ShownPage& at(std::size_t page) const { return pages_.at(page); }
  /// The number of the page, from 0, that first has a text; -1 without one.
  int pageOf(std::string_view part) const;
  /// The outline, one entry a line, with two blanks for each level: "text @page".
  std::string outline() const;
  /// The page, from 0, and height of a named place, as "page height"; empty for an unknown one.
  std::string place(std::string_view name) const;

 private:
  void addPages(int node);
  void addPage(int number, const std::string& object);
  void addLinks(ShownPage& page, const std::string& object) const;
  void addEntries(int first, std::size_t level, std::string& lines) const;
  std::string destination(std::string_view text) const;
  std::string placeIn(int node, std::string_view name) const;

  PdfObjects objects_;
  std::vector<ShownPage> pages_;
};

}  // namespace scrivalen::test
