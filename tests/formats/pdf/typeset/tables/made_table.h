#pragma once

#include "formats/document_formats.h"
#include "formats/pdf/typeset/drawn_pages.h"
#include "support/documents/made_document.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// A PDF with one table, which is open. Without more settings a page has A4's size and margins of 20 mm, so texts are
/// from 56.7 to 538.6 points.
class MadeTable : public MadeDocument {
 public:
  /// @param settings  pairs of a name and a value
  explicit MadeTable(std::vector<document::Column> columns = {},
                     std::initializer_list<std::pair<std::string_view, std::string_view>> settings = {})
      : MadeDocument(*documentFormatOf("pdf")) {
    set("clock", "1700000000");
    for (const auto& [name, value] : settings) {
      set(name, value);
    }
    beginTable(std::move(columns), "");
  }

  std::vector<DrawnPage> pages() { return drawnPages(bytes()); }
  std::string lines() { return linesOf(pages()); }
};

}  // namespace scrivalen::test
