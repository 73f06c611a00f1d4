// Writes the document of document.c through the header for C++17.
//
//   document_cpp [FOLDER]
#include <scrivalen/document.hpp>

#include <cstdint>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <vector>

using scrivalen::Align;
using scrivalen::Blocks;
using scrivalen::CellStyle;
using scrivalen::Column;
using scrivalen::ColumnData;
using scrivalen::Date;
using scrivalen::Style;
using scrivalen::Table;
using scrivalen::Time;
using scrivalen::Type;

namespace {

void addOutputs(scrivalen::Document& document, const std::string& folder) {
  for (const std::string_view format : scrivalen::formats()) {
    if (format != "chm") {  // it needs a help compiler
      document.addFile(folder + "/report." + std::string(format), format);
    }
  }
}

void writeMotto(const Blocks& blocks) {
  auto paragraph = blocks.beginParagraph(Align::Center);
  paragraph.text("Cars in ");
  paragraph.span(Style::Strong, "M\xC3\xBCnchen");
  paragraph.lineBreak();
  {
    auto colored = paragraph.beginColored("navy", "#FFFFE0");
    auto sized = colored.beginSized(14);
    auto german = sized.beginLanguage("de");
    german.text("Fuhrpark");
  }
  paragraph.link("https://example.org/?a=1&b=2", " and <more>", "all cars");
  paragraph.anchor("cars");
  paragraph.raw("html", "<wbr>");
}

void writeText(const Blocks& blocks) {
  blocks.heading(1, "Fleet");
  blocks.beginContents().item(1, "costs", "Costs");
  writeMotto(blocks);
  blocks.rule();
  blocks.beginQuote().paragraph("Every car has a driver.");
  {
    auto list = blocks.beginOrderedList(3);
    list.item("third");
    list.item("done", scrivalen::Task::Done);
  }
  blocks.code("if (a < b)\n\treturn a;\n", "c");
  blocks.pageBreak();
}

void writeRows(const Table& table) {
  {
    auto header = table.beginHeader();
    header.beginCell(CellStyle().header().align(Align::Center).span(2).color("white").background("#204060"))
        .text("Car");
    header.cell("Since");
    header.cell("Used");
  }
  table.row("bus", 0.125, Date(2024, 10, 4), true);
  table.row("van", -42, Time(Date(1970, 1, 1), 23, 59, 59), std::nullopt);
}

void writeColumns(const Table& table) {
  scrivalen::TextColumn names;
  names.add("car");
  names.add("lorry");
  const std::vector<double> costs = {1234.5, 2};
  const std::vector<Date> days = {Date(2022, 1, 8), Date()};
  const std::uint8_t known = 1;
  const std::uint8_t used = 2;
  table.rows({names, costs, ColumnData(days).validity(&known), ColumnData::booleans(&used, 2)});
}

void writeCosts(const Blocks& blocks) {
  blocks.beginHeading(2, "costs").text("Costs");
  const auto table = blocks.beginTable(
      {Column("car"), Column("cost", Type::Number).decimals(2), Column().align(Align::Center), Column()}, "costs");
  writeRows(table);
  writeColumns(table);
}

}  // namespace

int main(int argc, char** argv) try {
  scrivalen::Document document;
  addOutputs(document, argc > 1 ? argv[1] : ".");
  document.set("title", "Fleet");
  document.set("clock", "2026-01-31 23:59:59");
  {
    const auto section = document.beginSection("Fleet", "fleet");
    writeText(section);
    writeCosts(section);
  }
  document.close();
  for (const scrivalen::Warning& warning : document.warnings()) {
    std::printf("%s (%llu)\n", warning.message.c_str(), static_cast<unsigned long long>(warning.count));
  }
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "document: %s\n", error.what());
  return 1;
}
