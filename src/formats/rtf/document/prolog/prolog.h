#pragma once

#include "document/settings/settings.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/prolog/page_twips.h"
#include "formats/rtf/document/prolog/style_sheet.h"
#include "output/output_buffer.h"

namespace scrivalen::document::rtf {

/// Writes what comes before the text: tables of fonts, colours, styles and lists, properties, and paper.
void writeProlog(OutputBuffer& out, const FormatSettings& settings, const ColorTable& colors, const StyleSheet& styles,
                 const PageTwips& paper);

}  // namespace scrivalen::document::rtf
