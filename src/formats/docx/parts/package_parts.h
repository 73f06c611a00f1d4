#pragma once

#include "document/pictures/waiting_pictures.h"
#include "document/settings/settings.h"
#include "formats/docx/parts/page_header.h"
#include "output/archive/zip_writer.h"

#include <string_view>

namespace scrivalen::document::docx {

/// Writes the parts before the text: the relations of the archive, and the document's properties.
void writeProperties(ZipWriter& archive, const FormatSettings& settings);

inline constexpr std::string_view kThemePart = "theme/theme1.xml";
inline constexpr std::string_view kFontsPart = "fontTable.xml";

/// Which of these parts there are.
struct LookPartNames {
  bool theme = false;
  bool fonts = false;
};

/// Writes the settings of word processors.
void writeSettings(ZipWriter& archive, const FormatSettings& settings, const LookPartNames& lookParts);

/// Writes the pictures, and the parts that list the others (ECMA-376 part 2, 8.1 and 9.3).
void writeLists(ZipWriter& archive, const FormatSettings& settings, const PageHeader& header, WaitingPictures& pictures,
                const LookPartNames& lookParts);

}  // namespace scrivalen::document::docx
