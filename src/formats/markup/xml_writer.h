#pragma once

#include "document/model/writer.h"

#include <memory>

namespace scrivalen::document {

/// Writes XML 1.0, UTF-8 with line feeds, as docs/document.xsd describes it: a line for each block and row, and the
/// cells of a table in elements with the names of its columns.
std::unique_ptr<DocumentWriter> createXmlDocumentWriter(const WriterContext& context);

}  // namespace scrivalen::document
