#pragma once

#include "document/model/writer.h"
#include "formats/xlsx/workbook/sheet_rows.h"

#include <memory>

namespace scrivalen::xlsx {

/// Writes documents as workbooks (Office Open XML, ECMA-376). A section is a sheet; the first table of a sheet sets its
/// columns, is frozen at its header and gets a filter. Each block is a row.
std::unique_ptr<document::DocumentWriter> createXlsxDocumentWriter(const document::WriterContext& context);
/// The same with sheets that end earlier.
std::unique_ptr<document::DocumentWriter> createXlsxDocumentWriter(const document::WriterContext& context,
                                                                   const SheetLimits& limits);

}  // namespace scrivalen::xlsx
