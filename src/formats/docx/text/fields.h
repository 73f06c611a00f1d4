#pragma once

#include "formats/docx/text/run_writer.h"
#include "output/output_buffer.h"

#include <cstdint>
#include <string_view>

namespace scrivalen::document::docx {

/// Begins a field (ECMA-376, 17.16.18) that leads to an address outside of the document; its text follows.
void beginAddressField(OutputBuffer& out, std::string_view address, std::string_view title);
/// Begins a link to a place in the document.
/// @param id  of the place
void beginPlaceLink(OutputBuffer& out, std::string_view id, std::string_view title);
void endAddressField(OutputBuffer& out);
void endPlaceLink(OutputBuffer& out);

/// Writes the number of the page that a place is on. Word processors find it when they open the document.
void writePageReference(OutputBuffer& out, std::string_view id);

/// Writes the bookmark of a place.
/// @param number  one of its own
void writeBookmark(OutputBuffer& out, std::string_view id, std::int64_t number);

}  // namespace scrivalen::document::docx
