#pragma once

#include "document/model/writer.h"

#include <memory>

namespace scrivalen::typeset {

/// Writes PDF 1.7 page by page, with the fonts in it.
std::unique_ptr<document::DocumentWriter> createPdfDocumentWriter(const document::WriterContext& context);

}  // namespace scrivalen::typeset
