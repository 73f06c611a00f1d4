// Writes a page, or compiled help, with every kind of block, span and table on standard output.
//
//   scrivalen_write_html_page LANGUAGE [PICTURE [chm]]
#include "document/document.h"
#include "document/pictures/picture.h"
#include "formats/help/document/help_writer.h"
#include "formats/markup/html/html_writer.h"

#include <cstdio>
#include <string>

using namespace scrivalen::document;

namespace {

constexpr Format kHtml{"html", &createHtmlDocumentWriter};
constexpr Format kHelp{"chm", &scrivalen::help::createHelpDocumentWriter, "html"};

int writeToOutput(void* file, const void* data, std::size_t size) {
  return std::fwrite(data, 1, size, static_cast<std::FILE*>(file)) == size ? 0 : 5;
}

// A PNG of one grey pixel.
std::string pixel() {
  return "\x89PNG\r\n\x1A\n" + std::string("\0\0\0\rIHDR\0\0\0\x01\0\0\0\x01\x08\0\0\0\0\x3A\x7E\x9B\x55", 25) +
         std::string("\0\0\0\nIDAT\x78\x9C\x63\x60\0\0\0\x02\0\x01\x48\xAF\xA4\x71", 22) +
         std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
}

void writeSpan(Document& document, Span span, std::string_view text) {
  document.beginSpan(span);
  document.text(text);
  document.end();
  document.text(" ");
}

void writeLink(Document& document, std::string_view address, std::string_view text) {
  document.beginLink(address, "a \"title\"");
  document.text(text);
  document.end();
  document.text(", ");
}

void writeText(Document& document) {
  document.beginHeading(1, "text & more", Align::Auto);
  document.text("Text & more");
  document.end();
  document.beginParagraph(Align::Justify);
  document.text("A paragraph with <markup> & \"quotes\", and ");
  writeSpan(document, Span::Strong, "strong");
  writeSpan(document, Span::Emphasis, "emphasised");
  writeSpan(document, Span::Code, "code(1 < 2)");
  writeSpan(document, Span::Deleted, "deleted");
  writeSpan(document, Span::Underlined, "underlined");
  writeSpan(document, Span::Superscript, "2");
  writeSpan(document, Span::Subscript, "3");
  document.beginColored(0xB00020, 0xFFF4C2);
  document.beginSized(14.5);
  document.text("coloured and larger");
  document.end();
  document.end();
  document.text(" words. It is long enough to fill some lines of a page, so that its measure can be seen. ");
  writeLink(document, "https://example.org/a b?c[]=1&d=100%#e#f", "A link");
  writeLink(document, "#text & more", "a link inside");
  writeLink(document, "#50% <x>", "another one");
  writeLink(document, "#s2", "the next section");
  writeLink(document, "javascript:alert(1)", "no link");
  document.anchor("50% <x>");
  document.beginLanguage("he");
  document.text("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D");
  document.end();
  document.lineBreak();
  std::string reason;
  document.image(Picture::read(pixel(), reason), "a \"dot\"", 12, reason);
  document.raw("html", "<kbd>Enter</kbd>");
  document.end();
}

void writeItems(Document& document) {
  document.beginList(true, 3, false);
  document.beginItem(Task::None);
  document.text("A loose item that has");
  document.beginQuote();
  document.paragraph("a quote,");
  document.end();
  document.beginCode("c++ with more words");
  document.text(
      "if (a < b) {\n\treturn \"code\";  // of a line that is longer than a page of paper is wide, and goes on\n}\n");
  document.end();
  document.text("and more text.");
  document.end();
  document.beginItem(Task::Done);
  document.paragraph("A loose task.");
  document.end();
  document.end();
}

void writeLists(Document& document) {
  document.heading(2, "Lists");
  document.beginList(false, 1, true);
  for (const Task task : {Task::None, Task::Open, Task::Done}) {
    document.beginItem(task);
    document.text("A tight item");
    document.beginList(true, 1, true);
    document.beginItem(Task::None);
    document.text("with another one inside");
    document.end();
    document.end();
    document.end();
  }
  document.end();
  writeItems(document);
  document.rule();
}

void writeTable(Document& document) {
  Column number;
  number.type = ValueType::Number;
  number.format = ValueFormat(2);
  document.beginTable({Column(), number, Column(), Column()}, "table");
  document.beginRow(true);
  for (const std::string_view text : {"Region", "Sales", "Since", "Remark"}) {
    document.cell(text);
  }
  document.end();
  for (int row = 1; row <= 60; ++row) {
    document.beginRow(false);
    document.beginCell({.header = true});
    document.text("Region " + std::to_string(row));
    document.end();
    document.value(ValueType::Number, row * 1234.5, 0);
    document.value(ValueType::Date, 0, 20000 + row);
    document.beginCell({.color = row % 3 == 0 ? std::optional(0xFFFFFFU) : std::nullopt,
                        .background = row % 3 == 0 ? std::optional(0xB00020U) : std::nullopt});
    writeSpan(document, row % 2 == 0 ? Span::Strong : Span::Emphasis, "A & B");
    document.text("with some more words to fill a line or two of the narrow columns that a table has on paper");
    document.end();
    document.end();
  }
  document.beginRow(false);
  document.beginCell({.align = Align::Right, .span = 3});
  document.text("Three columns");
  document.end();
  document.cell("");
  document.end();
  document.end();
}

void writeDocument(Document& document) {
  document.beginContents();
  document.contentsItem(1, "text & more", "Text & more");
  document.contentsItem(2, "lists", "Lists");
  document.contentsItem(1, "table", "Table");
  document.end();
  document.beginSection("First \"section\"", "s 1");
  writeText(document);
  writeLists(document);
  document.end();
  document.beginSection("Second section", "s2");
  document.heading(1, "Table");
  writeTable(document);
  document.end();
  document.pageBreak();
  document.paragraph("The end.");
}

}  // namespace

int main(int argc, char** argv) {
  Document document;
  document.addStream(argc > 3 ? kHelp : kHtml, &writeToOutput, stdout);
  document.set("title", "A report & its \"title\"");
  document.set("author", "Jane <Doe>");
  document.set("subject", "All that a page may contain");
  document.set("keywords", "a, b");
  document.set("date", "2026-01-31");
  document.set("language", argc > 1 ? argv[1] : "en");
  document.set("header", "{title}||{date}");
  document.set("footer", "||Page {page} of {pages}");
  document.set("header-image", argc > 2 ? argv[2] : "");
  writeDocument(document);
  const Status status = document.close();
  if (status != Status::Ok) {
    std::fprintf(stderr, "%s\n", document.error());
  }
  return static_cast<int>(status);
}
