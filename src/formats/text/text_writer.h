#pragma once

#include "document/model/writer.h"

#include <memory>

namespace scrivalen::text {

/// Writes a document as plain text: lines of a monospaced font, wrapped at the setting "width".
std::unique_ptr<document::DocumentWriter> createTextWriter(const document::WriterContext& context);

}  // namespace scrivalen::text
