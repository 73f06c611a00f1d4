#pragma once

#include "document/model/writer.h"

#include <memory>

namespace scrivalen::document {

/// Writes Word documents (ECMA-376, Office Open XML): an archive of XML with named styles, numbered lists, fields and
/// tables that word processors edit as their own.
std::unique_ptr<DocumentWriter> createDocxDocumentWriter(const WriterContext& context);

}  // namespace scrivalen::document
