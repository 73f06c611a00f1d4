#pragma once

#include "document/model/writer.h"

#include <memory>

namespace scrivalen::markdown {

/// Writes GitHub Flavored Markdown, UTF-8 with line feeds. No text becomes markup. What Markdown cannot say stays as
/// plain text, with a warning.
std::unique_ptr<document::DocumentWriter> createMarkdownDocumentWriter(const document::WriterContext& context);

}  // namespace scrivalen::markdown
