// Writes the same sheet as a document and with libxlsxwriter: write_peer_parts DOCUMENT PEER PICTURE
// It has a header, values of each type, colours, joined cells, links, a picture and what a sheet has for printing.
#include "scrivalen/document.h"

#include <xlsxwriter.h>

#include <cstdio>
#include <string>
#include <utility>

namespace {

constexpr std::size_t kNul = static_cast<std::size_t>(-1);
constexpr double kMarginInches = 0.7874;
constexpr const char* kAddress = "https://example.org/a?b=c";

bool writeDocument(const char* path, const char* picture) {
  scrivalen_document* const document = scrivalen_new();
  scrivalen_add_file(document, path, "xlsx");
  for (const auto& [name, value] : {std::pair{"clock", "2026-01-31 23:59:59"},
                                    {"title", "A title"},
                                    {"author", "An author"},
                                    {"subject", "A subject"},
                                    {"keywords", "a, b"},
                                    {"property:Number", "7 & 8"},
                                    {"header", "left||{section}"},
                                    {"footer", "|{page} of {pages}|"}}) {
    scrivalen_set(document, name, value);
  }
  scrivalen_begin_section(document, "Prices & more", nullptr);
  const scrivalen_column columns[] = {
      {sizeof(scrivalen_column), "name", SCRIVALEN_TEXT, SCRIVALEN_LEFT, 0, 0, nullptr},
      {sizeof(scrivalen_column), "price", SCRIVALEN_NUMBER, SCRIVALEN_ALIGN_AUTO, 0, 2, nullptr},
      {sizeof(scrivalen_column), "day", SCRIVALEN_DATE, SCRIVALEN_ALIGN_AUTO, 0, 0, nullptr},
      {sizeof(scrivalen_column), "paid", SCRIVALEN_BOOLEAN, SCRIVALEN_ALIGN_AUTO, 0, 0, nullptr}};
  scrivalen_begin_table(document, columns, 4, nullptr);
  scrivalen_begin_row(document, 1);
  for (const char* name : {"name", "price", "day", "paid"}) {
    scrivalen_cell(document, name, kNul);
  }
  scrivalen_end(document);
  for (int row = 0; row < 2; ++row) {
    scrivalen_begin_row(document, 0);
    scrivalen_cell(document, row == 0 ? "plum" : " <&> ", kNul);
    scrivalen_cell_number(document, row + 0.25);
    scrivalen_cell_date(document, 20000 + row);
    scrivalen_cell_boolean(document, row);
    scrivalen_end(document);
  }
  scrivalen_begin_row(document, 0);
  const scrivalen_cell_style style{sizeof(scrivalen_cell_style), 0, SCRIVALEN_CENTER, 2, "red", "#FFEE00"};
  scrivalen_begin_cell(document, &style);
  scrivalen_text(document, "joined", kNul);
  scrivalen_end(document);
  scrivalen_cell(document, "x", kNul);
  scrivalen_begin_cell(document, nullptr);
  scrivalen_begin_link(document, kAddress, "A hint");
  scrivalen_text(document, "link", kNul);
  scrivalen_end(document);
  scrivalen_end(document);
  scrivalen_end(document);
  scrivalen_end(document);
  scrivalen_image_file(document, picture, "a picture", 0);
  scrivalen_page_break(document);
  scrivalen_begin_paragraph(document, nullptr);
  scrivalen_text(document, "plain ", kNul);
  scrivalen_begin_span(document, SCRIVALEN_STRONG);
  scrivalen_text(document, "strong", kNul);
  scrivalen_end(document);
  scrivalen_end(document);
  scrivalen_end(document);
  const bool isWritten = scrivalen_close(document) == SCRIVALEN_OK;
  scrivalen_free(document);
  return isWritten;
}

// The formats of the document's cells.
struct Formats {
  explicit Formats(lxw_workbook* book) : book_(book) {
    format_set_bold(header);
    format_set_bg_color(header, 0xF2F2F2);
    format_set_bottom(header, LXW_BORDER_THIN);
    format_set_bottom_color(header, 0x7F7F7F);
    format_set_num_format(price, "0.00");
    format_set_num_format(day, "yyyy-mm-dd");
    format_set_font_color(joined, 0xFF0000);
    format_set_bg_color(joined, 0xFFEE00);
    format_set_align(joined, LXW_ALIGN_CENTER);
    format_set_bold(strong);
    format_set_font_color(link, 0x0563C1);
    format_set_underline(link, LXW_UNDERLINE_SINGLE);
  }

  lxw_workbook* book_;
  lxw_format* header = workbook_add_format(book_);
  lxw_format* price = workbook_add_format(book_);
  lxw_format* day = workbook_add_format(book_);
  lxw_format* joined = workbook_add_format(book_);
  lxw_format* strong = workbook_add_format(book_);
  lxw_format* link = workbook_add_format(book_);
};

void setUpPages(lxw_worksheet* sheet) {
  worksheet_freeze_panes(sheet, 1, 0);
  worksheet_autofilter(sheet, 0, 0, 3, 3);
  worksheet_repeat_rows(sheet, 0, 0);
  worksheet_set_paper(sheet, 9);
  worksheet_fit_to_pages(sheet, 1, 0);
  worksheet_set_margins(sheet, kMarginInches, kMarginInches, kMarginInches, kMarginInches);
  worksheet_set_header(sheet, "&Lleft&R&A");
  worksheet_set_footer(sheet, "&C&P of &N");
  worksheet_ignore_errors(sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, "A1:XFD1048576");
  lxw_row_t breaks[] = {6, 0};
  worksheet_set_h_pagebreaks(sheet, breaks);
}

void writeCells(lxw_worksheet* sheet, const Formats& formats) {
  lxw_col_t column = 0;
  for (const char* name : {"name", "price", "day", "paid"}) {
    worksheet_set_column(sheet, column, column, 12, nullptr);
    worksheet_write_string(sheet, 0, column++, name, formats.header);
  }
  for (lxw_row_t row = 0; row < 2; ++row) {
    worksheet_write_string(sheet, row + 1, 0, row == 0 ? "plum" : " <&> ", nullptr);
    worksheet_write_number(sheet, row + 1, 1, row + 0.25, formats.price);
    worksheet_write_number(sheet, row + 1, 2, 25569 + 20000 + row, formats.day);
    worksheet_write_boolean(sheet, row + 1, 3, static_cast<int>(row), nullptr);
  }
  worksheet_merge_range(sheet, 3, 0, 3, 1, "joined", formats.joined);
  worksheet_write_string(sheet, 3, 2, "x", nullptr);
  worksheet_write_url_opt(sheet, 3, 3, kAddress, formats.link, "link", "A hint");
  std::string texts[] = {"plain ", "strong"};
  lxw_rich_string_tuple plain = {nullptr, texts[0].data()};
  lxw_rich_string_tuple strong = {formats.strong, texts[1].data()};
  lxw_rich_string_tuple* fragments[] = {&plain, &strong, nullptr};
  worksheet_write_rich_string(sheet, 6, 0, fragments, nullptr);
}

bool writePeer(const char* path, const char* picture) {
  lxw_workbook* const book = workbook_new(path);
  lxw_doc_properties properties{};
  std::string texts[] = {"A title", "A subject", "An author", "a, b"};
  properties.title = texts[0].data();
  properties.subject = texts[1].data();
  properties.author = texts[2].data();
  properties.keywords = texts[3].data();
  workbook_set_properties(book, &properties);
  workbook_set_custom_property_string(book, "Number", "7 & 8");
  lxw_worksheet* const sheet = workbook_add_worksheet(book, "Prices & more");
  setUpPages(sheet);
  writeCells(sheet, Formats(book));
  worksheet_insert_image(sheet, 5, 0, picture);
  return workbook_close(book) == LXW_NO_ERROR;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: write_peer_parts DOCUMENT PEER PICTURE\n", stderr);
    return 2;
  }
  return writeDocument(argv[1], argv[3]) && writePeer(argv[2], argv[3]) ? 0 : 1;
}
