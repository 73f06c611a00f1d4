#pragma once

#include "document/model/writer.h"

#include <memory>

namespace scrivalen::help {

/// Writes compiled help: a page for each section and each heading of level 1 or 2, which the help compiler makes into
/// one file at the end.
std::unique_ptr<document::DocumentWriter> createHelpDocumentWriter(const document::WriterContext& context);

}  // namespace scrivalen::help
