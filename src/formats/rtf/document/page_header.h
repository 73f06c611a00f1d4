#pragma once

#include "document/settings/settings.h"
#include "formats/rtf/document/prolog/style_sheet.h"
#include "output/output_buffer.h"

#include <string>
#include <string_view>

namespace scrivalen::document::rtf {

/// The header and the footer of each page, as "header" and "footer" say.
class PageHeader {
 public:
  PageHeader(const FormatSettings& settings, const StyleSheet& styles, int textWidth);

  /// Whether each section needs its own.
  bool namesSections() const;
  void write(OutputBuffer& out, std::string_view section) const;

 private:
  void writeOne(OutputBuffer& out, std::string_view word, Style style, std::string_view setting,
                std::string_view section) const;

  const FormatSettings& settings_;
  const StyleSheet& styles_;
  int textWidth_;
};

}  // namespace scrivalen::document::rtf
