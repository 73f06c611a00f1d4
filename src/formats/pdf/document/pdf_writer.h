#pragma once

#include "document/model/writer.h"

#include <memory>

namespace scrivalen::pdf {

/// Writes PDF as the conforming PDF report does: one style for each paragraph and cell, columns of equal width, the
/// characters of WinAnsi.
std::unique_ptr<document::DocumentWriter> createPdfDocumentWriter(const document::WriterContext& context);

}  // namespace scrivalen::pdf
