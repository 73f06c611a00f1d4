#include "api/api_support.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace scrivalen::test {
namespace {

using Document = scrivalen_document*;

// A PNG of one pixel.
constexpr unsigned char kPixel[] = {0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48,
                                    0x44, 0x52, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x01, 0x08, 0x00, 0x00, 0x00,
                                    0x00, 0x3A, 0x7E, 0x9B, 0x55, 0x00, 0x00, 0x00, 0x0A, 0x49, 0x44, 0x41, 0x54, 0x78,
                                    0xDA, 0x63, 0x60, 0x00, 0x00, 0x00, 0x02, 0x00, 0x01, 0xE5, 0x27, 0xDE, 0xFC, 0x00,
                                    0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};

scrivalen_status end(Document document) { return scrivalen_end(document); }

scrivalen_status beginTable(Document document) {
  const scrivalen_column columns[] = {
      {sizeof(scrivalen_column), "name", SCRIVALEN_TEXT, SCRIVALEN_LEFT, 0, 0, nullptr},
      {sizeof(scrivalen_column), "price", SCRIVALEN_NUMBER, SCRIVALEN_ALIGN_AUTO, 0, 2, nullptr},
      {sizeof(scrivalen_column), "share", SCRIVALEN_NUMBER, SCRIVALEN_RIGHT, 0, 0, "0%"},
  };
  return scrivalen_begin_table(document, columns, 3, "prices");
}

scrivalen_status beginCell(Document document) {
  const scrivalen_cell_style style{sizeof(scrivalen_cell_style), 1, SCRIVALEN_CENTER, 2, "red", "#FFEE00"};
  return scrivalen_begin_cell(document, &style);
}

scrivalen_status rows(Document document) {
  const std::int64_t offsets[] = {0, 3, 7};
  const double prices[] = {1.5, 2.25};
  const std::int64_t counts[] = {3, 4};
  const std::uint8_t valid = 1;
  const scrivalen_column_data columns[] = {
      {sizeof(scrivalen_column_data), SCRIVALEN_TEXT, "oneplum", offsets, nullptr, 0},
      {sizeof(scrivalen_column_data), SCRIVALEN_NUMBER, prices, nullptr, nullptr, 0},
      {sizeof(scrivalen_column_data), SCRIVALEN_INTEGER, counts, nullptr, &valid, 0},
  };
  return scrivalen_rows(document, columns, 3, 2);
}

std::vector<Step> makeSteps() {
  return {
      {"begin_section", [](Document d) { return scrivalen_begin_section(d, "first", "s1"); }},
      {"heading", [](Document d) { return scrivalen_heading(d, 1, "A heading", kNul); }},
      {"begin_heading", [](Document d) { return scrivalen_begin_heading(d, 2, "prices", nullptr); }},
      {"text in a heading", [](Document d) { return scrivalen_text(d, "Prices", kNul); }},
      {"end of a heading", end},
      {"begin_contents", [](Document d) { return scrivalen_begin_contents(d); }},
      {"contents_item", [](Document d) { return scrivalen_contents_item(d, 1, "prices", "Prices", kNul); }},
      {"end of the contents", end},
      {"paragraph", [](Document d) { return scrivalen_paragraph(d, "A paragraph.", kNul); }},
      {"begin_paragraph",
       [](Document d) {
         const scrivalen_paragraph_style style{sizeof(scrivalen_paragraph_style), SCRIVALEN_CENTER};
         return scrivalen_begin_paragraph(d, &style);
       }},
      {"text", [](Document d) { return scrivalen_text(d, "plain ", kNul); }},
      {"begin_span", [](Document d) { return scrivalen_begin_span(d, SCRIVALEN_STRONG); }},
      {"begin_colored", [](Document d) { return scrivalen_begin_colored(d, "navy", "#FFFFEE"); }},
      {"begin_sized", [](Document d) { return scrivalen_begin_sized(d, 14); }},
      {"begin_language", [](Document d) { return scrivalen_begin_language(d, "de"); }},
      {"begin_link", [](Document d) { return scrivalen_begin_link(d, "https://example.org/", "a title"); }},
      {"text in spans", [](Document d) { return scrivalen_text(d, "gro\xC3\x9F", kNul); }},
      {"end of a link", end},
      {"end of a language", end},
      {"end of a size", end},
      {"end of a colour", end},
      {"end of a span", end},
      {"line_break", [](Document d) { return scrivalen_line_break(d); }},
      {"anchor", [](Document d) { return scrivalen_anchor(d, "here"); }},
      {"image", [](Document d) { return scrivalen_image(d, kPixel, sizeof kPixel, "a pixel", 12); }},
      {"image_file", [](Document d) { return scrivalen_image_file(d, "no such picture", "none", 0); }},
      {"raw", [](Document d) { return scrivalen_raw(d, "html", "<wbr>", kNul); }},
      {"end of a paragraph", end},
      {"rule", [](Document d) { return scrivalen_rule(d); }},
      {"begin_quote", [](Document d) { return scrivalen_begin_quote(d); }},
      {"begin_list", [](Document d) { return scrivalen_begin_list(d, 1, 3, 1); }},
      {"begin_item", [](Document d) { return scrivalen_begin_item(d, 2); }},
      {"text in an item", [](Document d) { return scrivalen_text(d, "done", kNul); }},
      {"end of an item", end},
      {"end of a list", end},
      {"end of a quote", end},
      {"begin_code", [](Document d) { return scrivalen_begin_code(d, "c"); }},
      {"text in code", [](Document d) { return scrivalen_text(d, "int x;\n\treturn x;\n", kNul); }},
      {"end of code", end},
      {"page_break", [](Document d) { return scrivalen_page_break(d); }},
      {"begin_table", beginTable},
      {"begin_row", [](Document d) { return scrivalen_begin_row(d, 1); }},
      {"begin_cell", beginCell},
      {"text in a cell", [](Document d) { return scrivalen_text(d, "what", kNul); }},
      {"end of a cell", end},
      {"cell", [](Document d) { return scrivalen_cell(d, "share", kNul); }},
      {"end of a row", end},
      {"second begin_row", [](Document d) { return scrivalen_begin_row(d, 0); }},
      {"cell_boolean", [](Document d) { return scrivalen_cell_boolean(d, 1); }},
      {"cell_number", [](Document d) { return scrivalen_cell_number(d, 0.125); }},
      {"cell_integer", [](Document d) { return scrivalen_cell_integer(d, 42); }},
      {"end of the second row", end},
      {"third begin_row", [](Document d) { return scrivalen_begin_row(d, 0); }},
      {"cell_decimal", [](Document d) { return scrivalen_cell_decimal(d, -1250, 2); }},
      {"cell_date", [](Document d) { return scrivalen_cell_date(d, 20000); }},
      {"cell_time", [](Document d) { return scrivalen_cell_time(d, 86399); }},
      {"end of the third row", end},
      {"rows", rows},
      {"end of a table", end},
      {"end of a section", end},
  };
}

}  // namespace

void Written::setting(const char* name, const char* value) const {
  EXPECT_EQ(scrivalen_set(get(), name, value), SCRIVALEN_OK) << error();
}

void Written::end(int count) const {
  for (; count > 0; --count) {
    EXPECT_EQ(scrivalen_end(get()), SCRIVALEN_OK) << error();
  }
}

void Written::text(const char* text) const { EXPECT_EQ(scrivalen_text(get(), text, kNul), SCRIVALEN_OK) << error(); }

void Written::paragraph(const char* text) const {
  EXPECT_EQ(scrivalen_paragraph(get(), text, kNul), SCRIVALEN_OK) << error();
}

void Written::heading(int level, const char* text) const {
  EXPECT_EQ(scrivalen_heading(get(), level, text, kNul), SCRIVALEN_OK) << error();
}

void Written::span(int kind, const char* content) const {
  EXPECT_EQ(scrivalen_begin_span(get(), kind), SCRIVALEN_OK) << error();
  text(content);
  end();
}

void Written::link(const char* address, const char* content, const char* title) const {
  EXPECT_EQ(scrivalen_begin_link(get(), address, title), SCRIVALEN_OK) << error();
  text(content);
  end();
}

void Written::item(const char* content, int task) const {
  EXPECT_EQ(scrivalen_begin_item(get(), task), SCRIVALEN_OK) << error();
  text(content);
  end();
}

void Written::row(std::initializer_list<const char*> cells, int header) const {
  EXPECT_EQ(scrivalen_begin_row(get(), header), SCRIVALEN_OK) << error();
  for (const char* cell : cells) {
    EXPECT_EQ(scrivalen_cell(get(), cell, kNul), SCRIVALEN_OK) << error();
  }
  end();
}

const std::vector<Step>& contentSteps() {
  static const std::vector<Step> steps = makeSteps();
  return steps;
}

scrivalen_status writeContent(scrivalen_document* document) {
  for (const Step& step : contentSteps()) {
    if (const scrivalen_status status = step.call(document); status != SCRIVALEN_OK) {
      return status;
    }
  }
  return SCRIVALEN_OK;
}

std::vector<std::string> formats() {
  std::vector<std::string> names;
  for (std::size_t i = 0; scrivalen_format(i) != nullptr; ++i) {
    names.emplace_back(scrivalen_format(i));
  }
  std::erase(names, "chm");
  return names;
}

}  // namespace scrivalen::test
