#pragma once

#include "document/settings/settings.h"
#include "formats/xlsx/document/sheet/sheets.h"
#include "output/archive/zip_writer.h"

#include <string>

namespace scrivalen::xlsx {

/// Writes the parts of a workbook that come after its sheets.
/// @param styles  the part with the formats
void writePackage(ZipWriter& zip, const Sheets& sheets, const NamedPlaces& places, const std::string& styles,
                  const document::FormatSettings& settings);

}  // namespace scrivalen::xlsx
