#pragma once

#include "document/model/warnings.h"
#include "document/pictures/header_image.h"
#include "document/settings/settings.h"
#include "document/word/page_twips.h"
#include "formats/rtf/document/prolog/style_sheet.h"
#include "output/output_buffer.h"

#include <string_view>

namespace scrivalen::document::rtf {

/// The header and the footer of each page, as "header", "header-image" and "footer" say.
class PageHeader {
 public:
  /// @param settings, styles  not owned; must outlive this object
  /// @param warnings          gets one when the picture cannot be used
  PageHeader(const FormatSettings& settings, const StyleSheet& styles, const PageTwips& paper,
             OutputWarnings& warnings);

  /// Where the header begins, in twips from the top of the paper.
  int fromTop() const { return fromTop_; }
  /// Writes those of a section that differ from the ones of the section before it.
  void write(OutputBuffer& out, std::string_view section, int textWidth);

 private:
  void writePart(OutputBuffer& out, Style style, std::string_view section, std::string_view setting) const;
  void writeLine(OutputBuffer& out, Style style, std::string_view section, std::string_view setting) const;
  void writeImage(OutputBuffer& out, bool isAlone) const;

  const FormatSettings& settings_;
  const StyleSheet& styles_;
  const bool isRightToLeft_;
  const HeaderImage image_;
  const int imageHeight_;  // the most that it may have, in twips
  const int fromTop_;
  int textWidth_ = 0;  // that the header and footer are made for; 0: none is written
};

}  // namespace scrivalen::document::rtf
