#pragma once

#include "document/settings/settings.h"
#include "formats/pdf/typeset/fonts/font_file.h"

#include <memory>
#include <vector>

namespace scrivalen::typeset {

/// Reads the fonts of the setting "font-file", in their order. Raises OutputFailure with the name of a file that is
/// none, or that may not be embedded.
std::vector<std::unique_ptr<FontFile>> readHostFonts(const document::FormatSettings& settings);

}  // namespace scrivalen::typeset
