#pragma once

#include "document/model/writer.h"
#include "formats/markup/html/html_page.h"
#include "formats/markup/html/html_page_set.h"

#include <memory>

namespace scrivalen::document {

/// Writes a page in HTML, UTF-8 with line feeds: one with a style sheet of its own, or a template with the document in
/// the place of "%BODY%".
std::unique_ptr<DocumentWriter> createHtmlDocumentWriter(const WriterContext& context);

/// Writes one page of a set. It is UTF-8, too.
/// @param set  not owned; must outlive the writer
std::unique_ptr<DocumentWriter> createHtmlPageWriter(const WriterContext& context, HtmlPage page, HtmlPageSet& set);

}  // namespace scrivalen::document
