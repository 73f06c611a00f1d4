#pragma once

#include "document/model/writer.h"

#include <memory>

namespace scrivalen::document {

/// Writes a page in HTML, UTF-8 with line feeds: one with a style sheet of its own, or a template with the document in
/// the place of "%BODY%".
std::unique_ptr<DocumentWriter> createHtmlDocumentWriter(const WriterContext& context);

}  // namespace scrivalen::document
