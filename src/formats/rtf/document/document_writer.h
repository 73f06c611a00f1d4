#pragma once

#include "document/model/writer.h"

#include <memory>

namespace scrivalen::document {

/// Writes RTF 1.9 in ASCII with line feeds: styles, lists, fields and tables that text processors edit as their own.
std::unique_ptr<DocumentWriter> createRtfDocumentWriter(const WriterContext& context);

}  // namespace scrivalen::document
