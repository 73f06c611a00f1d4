#pragma once

#include "formats/pdf/typeset/pdf_objects.h"
#include "support/pdf/pdf_pages.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// What a page shows, with ways to find it.
struct ShownPage : PdfPage {
  const std::vector<PdfText>& texts() const { return content.texts; }
  const std::vector<PdfArea>& areas() const { return content.areas; }
  const std::vector<PdfImageBox>& images() const { return content.images; }

  /// The texts with blanks between them.
  std::string all() const;
  bool has(std::string_view part) const { return all().find(part) != std::string::npos; }
  /// The first text that contains another; fails the test without one.
  PdfText find(std::string_view part) const;
  /// The texts on the baseline of a text, from left to right.
  std::vector<PdfText> lineOf(std::string_view part) const;
  /// The areas of a colour, 0xRRGGBB.
  std::vector<PdfArea> areasOf(std::uint32_t color) const;
};

/// The pages of a PDF file as a reader shows them. Whatever is wrong with the file fails the test.
class ShownPages {
 public:
  explicit ShownPages(const std::string& file);

  const PdfObjects& objects() const { return objects_; }
  std::string catalog() const { return objects_.object(numberAfter(objects_.trailer(), "/Root ")); }
  std::string information() const { return objects_.object(numberAfter(objects_.trailer(), "/Info ")); }
  std::string xmp() const { return objects_.stream(numberAfter(catalog(), "/Metadata ")); }
  /// The dictionary of a page.
  std::string pageObject(std::size_t page) const;
  std::size_t count() const { return pages_.size(); }
  const ShownPage& at(std::size_t page) const { return pages_.at(page); }
  /// The number of the page, from 0, that first has a text; -1 without one.
  int pageOf(std::string_view part) const;
  /// The outline, one entry a line, with two blanks for each level: "text @page".
  std::string outline() const;
  /// The page, from 0, and height of a named place, as "page height"; empty for an unknown one.
  std::string place(std::string_view name) const;

 private:
  PdfObjects objects_;
  PdfPages file_;
  std::vector<ShownPage> pages_;
};

}  // namespace scrivalen::test
