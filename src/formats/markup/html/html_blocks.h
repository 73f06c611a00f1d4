#pragma once

#include "formats/markup/html/html_lists.h"
#include "formats/markup/html/html_markup.h"

#include <string_view>

namespace scrivalen::document {

/// Writes the blocks that are neither lists nor tables.
class HtmlBlocks {
 public:
  /// @param markup, lists  not owned; must outlive this object
  HtmlBlocks(HtmlMarkup& markup, HtmlLists& lists) : markup_(markup), lists_(lists) {}

  void title(const Event& title);
  void beginSection(const Event& section);
  void endSection() { endContainer("</section>\n"); }
  void beginQuote();
  void endQuote() { endContainer("</blockquote>\n"); }
  void beginHeading(const Event& heading);
  void endHeading(const Event& heading);
  void beginParagraph(const Event& paragraph);
  void endParagraph();
  void beginCode(const Event& code);
  void endCode();
  /// Writes a block that is all markup, or the start tag of one.
  void put(std::string_view markup);

  /// Before text and its spans.
  void beginInline();

 private:
  void endContainer(std::string_view endTag);

  HtmlMarkup& markup_;
  HtmlLists& lists_;
  bool isInParagraph_ = false;    // or in a heading or the like, where text needs no element of its own
  bool isParagraphBare_ = false;  // a line of a tight item
};

}  // namespace scrivalen::document
