#include "formats/document_formats.h"

#include "formats/docx/docx_writer.h"
#include "formats/help/document/help_writer.h"
#include "formats/markdown/markdown_writer.h"
#include "formats/markup/html/html_writer.h"
#include "formats/markup/xml_writer.h"
#include "formats/pdf/typeset/typeset_writer.h"
#include "formats/rtf/document/document_writer.h"
#include "formats/text/text_writer.h"
#include "formats/xlsx/document/workbook_writer.h"
#include "text/ascii.h"

#include <algorithm>
#include <array>

namespace scrivalen {
namespace {

struct DocumentFormat {
  document::Format format;
  std::array<std::string_view, 2> extensions;  // in lower case; empty: none
};

// The order is that of scrivalen_format.
constexpr std::array kFormats{
    DocumentFormat{{"text", text::createTextWriter}, {".txt"}},
    DocumentFormat{{"html", document::createHtmlDocumentWriter}, {".html", ".htm"}},
    DocumentFormat{{"xml", document::createXmlDocumentWriter}, {".xml"}},
    DocumentFormat{{"markdown", markdown::createMarkdownDocumentWriter}, {".md", ".markdown"}},
    DocumentFormat{{"rtf", document::createRtfDocumentWriter}, {".rtf"}},
    DocumentFormat{{"chm", help::createHelpDocumentWriter, "html"}, {".chm"}},
    DocumentFormat{{"pdf", typeset::createPdfDocumentWriter}, {".pdf"}},
    DocumentFormat{{"xlsx", xlsx::createXlsxDocumentWriter}, {".xlsx"}},
    DocumentFormat{{"docx", document::createDocxDocumentWriter}, {".docx"}},
};

// The extension of a path's last part, with its point; empty without one.
std::string_view extensionOf(std::string_view path) {
  const std::size_t point = path.find_last_of("./\\");
  return point == path.npos || path[point] != '.' ? std::string_view() : path.substr(point);
}

template <typename Matches>
const document::Format* firstFormat(Matches matches) {
  const auto* const found = std::find_if(kFormats.begin(), kFormats.end(), matches);
  return found == kFormats.end() ? nullptr : &found->format;
}

}  // namespace

const document::Format* documentFormatOf(std::string_view name) {
  return firstFormat([&](const DocumentFormat& known) { return known.format.name == name; });
}

const document::Format* documentFormatOfPath(std::string_view path) {
  const std::string extension = asciiLowered(extensionOf(path));
  if (extension.empty()) {
    return nullptr;
  }
  return firstFormat([&](const DocumentFormat& known) {
    return known.extensions[0] == extension || known.extensions[1] == extension;
  });
}

const char* documentFormatName(std::size_t index) {
  return index < kFormats.size() ? kFormats[index].format.name.data() : nullptr;
}

std::string documentFormatNames() {
  std::string names;
  for (const DocumentFormat& known : kFormats) {
    names.append(names.empty() ? "" : ", ").append(known.format.name);
  }
  return names;
}

}  // namespace scrivalen
