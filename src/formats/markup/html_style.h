#pragma once

#include "document/settings.h"

#include <string>

namespace scrivalen::document {

/// The style sheet of a page without a template, with the font, paper, margins, header and footer of the settings.
std::string htmlStyle(const FormatSettings& settings);

}  // namespace scrivalen::document
