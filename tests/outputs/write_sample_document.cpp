// Writes a document with everything that word processors can hold, for other programs to read.
//
//   write_sample_document FILE.rtf|FILE.docx

#include "document/document.h"
#include "document/pictures/picture.h"
#include "formats/document_formats.h"
#include "support/documents/pictures.h"
#include "text/colors.h"

#include <cstdio>
#include <string>
#include <string_view>

using namespace scrivalen::document;

namespace {

void write(Document& document, std::string_view text) { document.text(text); }

void span(Document& document, Span kind, std::string_view text) {
  document.beginSpan(kind);
  write(document, text);
  document.end();
  write(document, " ");
}

void item(Document& document, std::string_view text, Task task = Task::None) {
  document.beginItem(task);
  write(document, text);
  document.end();
}

void writeContents(Document& document) {
  document.beginContents();
  document.contentsItem(1, "prose", "Prose");
  document.contentsItem(1, "lists", "Lists");
  document.contentsItem(2, "nested-lists", "Nested lists");
  document.contentsItem(1, "tables", "Tables");
  document.end();
}

void writeText(Document& document) {
  document.heading(1, "Prose");
  document.beginParagraph(Align::Auto);
  write(document, "Braces {a} and \\, € Ωμέγα 中文 😀 é, ");
  span(document, Span::Strong, "strong");
  span(document, Span::Emphasis, "emphasis");
  span(document, Span::Code, "code()");
  span(document, Span::Deleted, "deleted");
  span(document, Span::Underlined, "underlined");
  write(document, "E = mc");
  span(document, Span::Superscript, "2");
  write(document, "H");
  span(document, Span::Subscript, "2");
  document.beginColored(0xC00000, std::nullopt);
  write(document, "red ");
  document.end();
  document.beginColored(std::nullopt, 0xFFFF00);
  write(document, "marked");
  document.end();
  document.beginSized(18);
  write(document, " large ");
  document.end();
  document.beginLink("https://example.org/a?b={c}", "An example");
  write(document, "a link");
  document.end();
  write(document, " and ");
  document.beginLink("#tables", {});
  write(document, "one to the tables");
  document.end();
  write(document, ". And a line\nbreak. ");
  for (int i = 0; i < 6; ++i) {
    write(document, "Prose that is long enough to be wrapped into several lines of a page. ");
  }
  document.end();
  document.paragraph("\u0641\u0642\u0631\u0629 (from the right), 123.");
  document.beginQuote();
  document.paragraph(
      "A quote with a border on its left. It is long enough to need a second line, which is indented "
      "like the first one, and it has two paragraphs.");
  document.paragraph("The second paragraph.");
  document.end();
  document.beginCode("cpp");
  write(document, "int main() {\n  return answer(\"\\n\");\t// 42\n}\n");
  document.end();
  document.rule();
  document.beginParagraph(Align::Center);
  write(document, "A centred paragraph after a rule.");
  document.end();
}

void writeLists(Document& document) {
  document.heading(1, "Lists");
  document.beginList(false, 0, true);
  item(document,
       "a bullet whose text is so long that it has to be wrapped to a second line, which begins below the "
       "text of the first one and not below the bullet");
  item(document, "another bullet");
  item(document, "a task to do", Task::Open);
  item(document, "a task done", Task::Done);
  document.end();
  document.paragraph("Then a numbered list:");
  document.beginList(true, 1, true);
  item(document, "one");
  item(document, "two");
  document.end();
  document.paragraph("It starts again, with paragraphs:");
  document.beginList(true, 1, false);
  for (const char* text : {"first", "second"}) {
    document.beginItem(Task::None);
    document.paragraph(text);
    document.paragraph("A further paragraph of the item.");
    document.end();
  }
  document.end();
  document.paragraph("And one that starts at 9:");
  document.beginList(true, 9, true);
  item(document, "nine");
  item(document, "ten");
  document.end();
  document.heading(2, "Nested lists");
  document.beginList(true, 1, true);
  for (const char* text : {"outer one", "outer two"}) {
    document.beginItem(Task::None);
    write(document, text);
    document.beginList(false, 0, true);
    item(document, "a bullet");
    document.beginItem(Task::None);
    write(document, "a bullet with numbers");
    document.beginList(true, 1, true);
    item(document, "inner one");
    item(document, "inner two");
    document.end();
    document.end();
    document.end();
    document.end();
  }
  document.end();
}

void cell(Document& document, const CellStyle& style, std::string_view text) {
  document.beginCell(style);
  write(document, text);
  document.end();
}

void writeTables(Document& document) {
  document.heading(1, "Tables");
  document.beginTable({}, "prices");
  document.beginRow(true);
  for (const char* text : {"Article", "Description", "Price", "Pieces"}) {
    document.cell(text);
  }
  document.end();
  const std::string_view kText = "A long description that has to be wrapped, as the columns do not have so much space.";
  for (int i = 1; i <= 5; ++i) {
    document.beginRow(false);
    document.cell("Article " + std::to_string(i));
    document.cell(i % 2 == 0 ? "short" : kText);
    document.value(ValueType::Number, 12.5 * i, 0);
    document.value(ValueType::Integer, 0, i * 1000);
    document.end();
  }
  document.beginRow(false);
  cell(document, {.header = true, .span = 2}, "Sum over two columns");
  cell(document, {.color = 0xC00000, .background = 0xFFFFC0}, "187.5");
  cell(document, {.align = Align::Center}, "centred\ntwo lines");
  document.end();
  document.end();
  document.paragraph("A wide table follows. It is set smaller:");
  document.beginTable({}, "wide");
  for (int row = 0; row < 4; ++row) {
    document.beginRow(row == 0);
    for (int column = 0; column < 14; ++column) {
      document.cell(row == 0 ? "Column" + std::to_string(column) : std::to_string(row * 1000 + column) + ".00");
    }
    document.end();
  }
  document.end();
}

void writeSplitTable(Document& document) {
  document.heading(1, "A table in parts");
  document.beginTable({}, "parts");
  for (int row = 0; row < 45; ++row) {
    document.beginRow(row == 0);
    for (int column = 0; column < 70; ++column) {
      document.cell(row == 0 ? "Head" + std::to_string(column) : std::to_string(row) + "/" + std::to_string(column));
    }
    document.end();
  }
  document.end();
}

void writePictures(Document& document) {
  document.heading(1, "Pictures");
  std::string reason;
  const auto picture = Picture::read(scrivalen::test::greyPng(300, 100), reason);
  document.image(picture, "a grey box", 0, reason);
  document.image(nullptr, "a missing picture", 0, "it is missing");
  document.beginList(false, 0, true);
  document.beginItem(Task::None);
  write(document, "An item with a table:");
  document.beginTable({}, "inner");
  document.beginRow(true);
  document.cell("a");
  document.cell("b");
  document.end();
  document.beginRow(false);
  document.cell("1");
  document.beginCell({});
  document.image(picture, "a grey box", 0, reason);
  document.end();
  document.end();
  document.end();
  document.beginCode({});
  write(document, "code in an item");
  document.end();
  document.end();
  document.end();
}

}  // namespace

int main(int argc, char** argv) {
  const Format* const format = argc == 2 ? scrivalen::documentFormatOfPath(argv[1]) : nullptr;
  if (format == nullptr) {
    std::fprintf(stderr, "usage: write_sample_document FILE.rtf|FILE.docx\n");
    return 2;
  }
  Document document;
  document.addFile(*format, argv[1]);
  document.set("title", "A sample of {RTF}");
  document.set("author", "Åsa");
  document.set("clock", "2026-01-31 12:00:00");
  document.set("header", "{title}||{section}");
  document.set("footer", "{date}|middle|Page {page} of {pages}");
  document.beginParagraph(Align::Auto);
  write(document, "The title comes first.");
  document.end();
  writeContents(document);
  writeText(document);
  writeLists(document);
  document.beginSection("Tables", {});
  writeTables(document);
  document.pageBreak();
  writeSplitTable(document);
  document.end();
  document.beginSection("Pictures", {});
  writePictures(document);
  document.end();
  if (document.close() != Status::Ok) {
    std::fprintf(stderr, "write_sample_document: %s\n", document.error());
    return 1;
  }
}
