#pragma once

#include "document/pictures/waiting_pictures.h"
#include "document/settings/settings.h"
#include "formats/docx/parts/page_header.h"
#include "output/archive/zip_writer.h"

namespace scrivalen::document::docx {

/// Writes the parts before the text: the relations of the archive, and the document's properties.
void writeProperties(ZipWriter& archive, const FormatSettings& settings);

/// Writes the settings of word processors.
void writeSettings(ZipWriter& archive, const FormatSettings& settings);

/// Writes the pictures, and the parts that list the others (ECMA-376 part 2, 8.1 and 9.3).
void writeLists(ZipWriter& archive, const FormatSettings& settings, const PageHeader& header,
                WaitingPictures& pictures);

}  // namespace scrivalen::document::docx
