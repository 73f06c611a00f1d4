#pragma once

#include "document/settings/settings.h"
#include "document/word/document_font.h"
#include "document/word/page_twips.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/prolog/style_sheet.h"
#include "output/output_buffer.h"

namespace scrivalen::document::rtf {

/// The number of a font in the table of fonts.
int fontNumber(const DocumentFont& font);

/// Writes what comes before the text: tables of fonts, colours, styles and lists, properties, and paper.
void writeProlog(OutputBuffer& out, const FormatSettings& settings, const DocumentFont& font, const ColorTable& colors,
                 const StyleSheet& styles, const PageTwips& paper);

}  // namespace scrivalen::document::rtf
