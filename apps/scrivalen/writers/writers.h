#pragma once

#include "events/document.h"

#include <memory>

/// Creates the writer of each format.
namespace scrivalen::command {

std::unique_ptr<DocumentWriter> createChmWriter();
std::unique_ptr<DocumentWriter> createHtmlWriter();
std::unique_ptr<DocumentWriter> createPdfWriter();
std::unique_ptr<DocumentWriter> createRtfWriter();
std::unique_ptr<DocumentWriter> createTextWriter();
std::unique_ptr<DocumentWriter> createXlsxWriter();
std::unique_ptr<DocumentWriter> createXmlWriter();

}  // namespace scrivalen::command
