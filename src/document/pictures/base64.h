#pragma once

#include "output/output_buffer.h"

#include <string_view>

namespace scrivalen::document {

/// Writes bytes in base64 (RFC 4648), padded and in one line.
void putBase64(OutputBuffer& out, std::string_view bytes);

}  // namespace scrivalen::document
