#pragma once

#include "scrivalen/pdf_doc.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// A PDF written by a test, split into its parts.
class MadePdf {
 public:
  /// Finds the objects through the file's own table; the test fails if the table is wrong.
  explicit MadePdf(std::string fileBytes);
  MadePdf(MadePdf&&) = default;
  MadePdf& operator=(MadePdf&&) = default;

  std::string bytes;
  /// The result of EndDoc.
  int result = 0;

  std::size_t pageCount() const { return pages_.size(); }
  std::size_t objectCount() const { return objects_.size(); }
  /// The bytes of an object, from its number to the blank line after it; objects count from 1.
  std::string_view object(std::size_t number) const;
  /// The one object that contains these words.
  std::string_view objectWith(std::string_view words) const;

  /// The content of a page with its line ends as "\n"; pages count from 1.
  std::string content(std::size_t page) const;
  /// The texts of a page's lines, each without its brackets.
  std::vector<std::string> texts(std::size_t page) const;
  /// The frames of a page's cells, as "x y width height".
  std::vector<std::string> frames(std::size_t page) const;

  /// The links in the order of their pages, each as "page 1 [50 802 565 786] to page 2 at 50 802".
  std::vector<std::string> links() const;
  /// The outline as a reader shows it, indented by two blanks a level, each entry as "Title (2) to page 1 at 50 802"
  /// with its /Count.
  std::string outline() const;

 private:
  std::vector<std::string> linesOf(std::size_t page) const;
  std::string destinationOf(std::string_view object) const;
  std::string entryOf(std::size_t number) const;
  std::size_t pageWith(std::size_t number) const;

  std::vector<std::string_view> objects_;
  std::vector<std::size_t> pages_;  // as object numbers
};

struct PdfSetting {
  int landscape = 0;
  int conforming = 0;
  const wchar_t* pageMode = nullptr;
};

inline constexpr PdfSetting kClassic{};
inline constexpr PdfSetting kConforming{0, 1};
inline constexpr PdfSetting kWide{1};

inline constexpr _RGB_COLOR kWhiteCell{1, 1, 1};

/// The document that an action fills between BegDoc and EndDoc; the test fails if its structure is wrong.
MadePdf made(CPDFdoc& doc, const std::function<void(CPDFdoc&)>& fill, PdfSetting setting = kClassic);
MadePdf made(const std::function<void(CPDFdoc&)>& fill, PdfSetting setting = kClassic);
/// The same with Times as the current font 1.
MadePdf madeInTimes(const std::function<void(CPDFdoc&)>& fill, PdfSetting setting = kClassic);

/// Adds a paragraph with a text.
void paragraph(CPDFdoc& doc, const wchar_t* text);
/// Adds a row with a white cell for each text.
void row(CPDFdoc& doc, const std::vector<const wchar_t*>& texts);
/// Adds @p count paragraphs "1", "2", ...; in size 12 each takes 24 points, and the 32nd is the last on the first page.
void paragraphs(CPDFdoc& doc, int count);

}  // namespace scrivalen::test
