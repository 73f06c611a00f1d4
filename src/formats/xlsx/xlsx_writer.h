#pragma once

#include "document/model/writer.h"

#include <memory>

namespace scrivalen::xlsx {

/// Writes a spreadsheet of texts as the spreadsheet report does: a row for each block and for each row of a table.
std::unique_ptr<document::DocumentWriter> createXlsxDocumentWriter(const document::WriterContext& context);

}  // namespace scrivalen::xlsx
