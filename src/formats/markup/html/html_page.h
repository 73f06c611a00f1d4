#pragma once

#include "document/model/writer.h"

#include <string>
#include <string_view>

namespace scrivalen::document {

/// What an HTML document has around its content.
struct HtmlPage {
  std::string head;
  std::string tail;
};

/// The page that the settings describe: that of the template, or one with a style sheet of its own.
HtmlPage htmlPageOf(const WriterContext& context);

/// The pages of a set, which differ in their titles. They have no paper, and so no header and no footer.
class HtmlPageFrame {
 public:
  /// Reads the template.
  /// @param charset  what the pages say that they are encoded in, also where the template names another
  HtmlPageFrame(const WriterContext& context, std::string_view charset);

  HtmlPage page(std::string_view title) const;

 private:
  const FormatSettings& settings_;
  std::string charset_;
  std::string template_;  // empty: the pages have a style sheet of their own
  std::string style_;
};

}  // namespace scrivalen::document
