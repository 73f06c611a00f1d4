#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {

/// Where a place is: on a page, at a height.
struct Place {
  int page = 0;          ///< the number of the page's object
  int pageNumber = 0;    ///< the first page has number 1
  std::int64_t top = 0;  ///< from the page's lower edge, in points
};

void appendDestination(std::string& out, const Place& place);

/// Writes the outline (PDF 1.7, 12.3.3) while its entries come: one is written once its next sibling or the end of its
/// parent is known. Only the last entry of each level is kept. Readers show two levels at first.
class Outline {
 public:
  /// @param file  not owned; must outlive this object
  explicit Outline(PdfFile& file) : file_(file) {}

  /// @param level  1 to 6; a level below the one before is nested by one
  void add(int level, std::string_view text, const Place& place);
  bool isEmpty() const { return open_.empty() && root_ == 0; }
  /// @return the number of the outline's object
  int finish();
  /// How many entries lack the end of their text, which the file's standard has no room for.
  std::size_t cutTexts() const { return cutTexts_; }

 private:
  struct Entry {
    int level = 0;
    int number = 0;
    int previous = 0;
    int firstKid = 0;
    int lastKid = 0;
    std::int64_t kids = 0;
    std::string text;
    Place place;
  };

  void closeTo(int level, int next);
  void writeEntry(const Entry& entry, int next);

  PdfFile& file_;
  std::vector<Entry> open_;  // each within the one before
  int root_ = 0;
  int firstOfRoot_ = 0;
  int lastOfRoot_ = 0;
  std::int64_t shown_ = 0;
  std::size_t cutTexts_ = 0;
};

}  // namespace scrivalen::typeset
