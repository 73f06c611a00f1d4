#pragma once

#include "document/model/table.h"
#include "document/settings/settings.h"

#include <string>
#include <string_view>

namespace scrivalen::document {

/// The style sheet of a page without a template, with the font, paper, margins, header and footer of the settings.
/// @param headerImage  comes before the left part of the header; empty without a picture
std::string htmlStyle(const FormatSettings& settings, std::string_view headerImage);

/// The style sheet of a page that has no paper of its own. It is ASCII.
std::string htmlScreenStyle(const FormatSettings& settings);

struct HtmlPrintSize {
  double points = 0;             ///< 0: the usual size, at which the table fits on the paper
  bool wordsAreDivided = false;  ///< because the table fits at no size that can be read
};

/// The size at which a table is printed.
HtmlPrintSize htmlPrintSize(const Table& table, const FormatSettings& settings);

}  // namespace scrivalen::document
