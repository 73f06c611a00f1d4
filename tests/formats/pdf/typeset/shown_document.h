#pragma once

#include "formats/document_formats.h"
#include "formats/pdf/typeset/shown_pages.h"
#include "support/documents/made_document.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace scrivalen::test {

/// A document that is written as PDF and read again.
class ShownDocument : public MadeDocument {
 public:
  ShownDocument() : MadeDocument(*documentFormatOf("pdf")) { set("clock", "2026-01-31 23:59:59"); }

  ShownPages pages() { return ShownPages(bytes()); }

  /// Adds paragraphs of one line, "Line 1" and so on, which are a height of 19 points each.
  void addLines(int count) {
    for (int i = 1; i <= count; ++i) {
      paragraph("Line " + std::to_string(i));
    }
  }
};

}  // namespace scrivalen::test
