// Writes the same random cells as a document and with libxlsxwriter: write_peer_workbooks DOCUMENT PEER
#include "scrivalen/document.h"

#include <xlsxwriter.h>

#include <array>
#include <cstdio>
#include <random>
#include <string>

namespace {

constexpr int kRows = 2000;
constexpr int kSerialOfEpoch = 25569;
constexpr double kSecondsPerDay = 86400;
constexpr std::size_t kNul = static_cast<std::size_t>(-1);

// Both files, cell by cell.
class Peers {
 public:
  Peers(const char* own, const char* peer) : document_(scrivalen_new()), book_(workbook_new(peer)) {
    sheet_ = workbook_add_worksheet(book_, nullptr);
    scrivalen_add_file(document_, own, "xlsx");
    scrivalen_set(document_, "clock", "2026-01-31 23:59:59");
    scrivalen_begin_table(document_, nullptr, 6, nullptr);
  }
  Peers(const Peers&) = delete;
  Peers& operator=(const Peers&) = delete;

  void row() {
    scrivalen_begin_row(document_, 0);
    column_ = 0;
  }
  void endRow() {
    scrivalen_end(document_);
    ++row_;
  }
  void integer(int value) {
    scrivalen_cell_integer(document_, value);
    number(value, "0");
  }
  void decimal(int cents) {
    scrivalen_cell_decimal(document_, cents, 2);
    number(cents / 100.0, "0.00");
  }
  void date(int days) {
    scrivalen_cell_date(document_, days);
    number(days + kSerialOfEpoch, "yyyy-mm-dd");
  }
  void time(int seconds) {
    scrivalen_cell_time(document_, seconds);
    number(seconds / kSecondsPerDay + kSerialOfEpoch, "yyyy-mm-dd hh:mm:ss");
  }
  void boolean(int value) {
    scrivalen_cell_boolean(document_, value);
    worksheet_write_boolean(sheet_, row_, column_++, value, formatOf("\"TRUE\";\"TRUE\";\"FALSE\""));
  }
  void text(const std::string& text) {
    scrivalen_cell(document_, text.c_str(), kNul);
    worksheet_write_string(sheet_, row_, column_++, text.c_str(), nullptr);
  }
  bool close() {
    const bool isWritten = scrivalen_close(document_) == SCRIVALEN_OK;
    scrivalen_free(document_);
    return workbook_close(book_) == LXW_NO_ERROR && isWritten;
  }

 private:
  void number(double value, const char* code) {
    worksheet_write_number(sheet_, row_, column_++, value, formatOf(code));
  }
  lxw_format* formatOf(const char* code) {
    lxw_format* const format = workbook_add_format(book_);
    format_set_num_format(format, code);
    return format;
  }

  scrivalen_document* document_;
  lxw_workbook* book_;
  lxw_worksheet* sheet_ = nullptr;
  lxw_row_t row_ = 0;
  lxw_col_t column_ = 0;
};

int between(std::mt19937& random, int least, int most) {
  return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: write_peer_workbooks DOCUMENT PEER\n", stderr);
    return 2;
  }
  // Without such as "_x0041_", which libxlsxwriter does not escape.
  constexpr std::array kTexts = {"a", "007", " b ", "=1+1", "<&>\"'", "two\nlines", "\xC3\xA4\xE2\x82\xAC", "x y"};
  std::mt19937 random(1);
  Peers peers(argv[1], argv[2]);
  for (int i = 0; i < kRows; ++i) {
    peers.row();
    peers.integer(between(random, -1'000'000'000, 1'000'000'000));
    peers.decimal(between(random, -1'000'000'000, 1'000'000'000));
    peers.date(between(random, -20'000, 40'000));
    peers.time(between(random, 0, 2'000'000'000));
    peers.boolean(between(random, 0, 1));
    peers.text(kTexts[random() % kTexts.size()]);
    peers.endRow();
  }
  return peers.close() ? 0 : 1;
}
