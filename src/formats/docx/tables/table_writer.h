#pragma once

#include "document/model/table.h"
#include "document/word/table_plan.h"
#include "formats/docx/parts/styles.h"
#include "formats/docx/text/inline_writer.h"
#include "output/output_buffer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::docx {

/// Writes tables. The rows of one that is split wait until there are kRowsOfAPart of them; then each part writes them.
class TableWriter {
 public:
  static constexpr std::size_t kRowsOfAPart = 40;

  /// @param out, styles, inlines  not owned; must outlive this object
  /// @param isRightToLeft         whether the first column is on the right
  TableWriter(OutputBuffer& out, StyleSheet& styles, InlineWriter& inlines, bool isRightToLeft)
      : out_(out), styles_(styles), inlines_(inlines), isRightToLeft_(isRightToLeft), scratch_(sink_) {}

  /// @param indent  in twips
  void begin(const Table& table, TablePlan plan, int indent);
  void row(const Row& row);
  void end();

 private:
  struct StringSink : ByteSink {
    bool take(const char* data, std::size_t size) override {
      text->append(data, size);
      return true;
    }
    std::string* text = nullptr;
  };

  // The rows of a part of a split table that wait.
  struct Waiting {
    std::string headers;
    std::string rows;
  };

  // A cell of a row in a part of the table.
  struct Place {
    const Cell* cell;
    std::size_t columns;  // of the part
    int width;            // twips
    Align align;
  };

  bool isPlain(const Row& row) const;
  bool hasDirections(const Row& row) const;
  void findColumns(const Row& row);
  /// Of the cells that a part may show, the one after another.
  std::size_t nextCell(std::size_t cell, const TablePart& part) const;
  void writeStart(const TablePart& part);
  void writePlainRow(const Row& row);
  void writeSplitRow(const Row& row);
  void writeRow(OutputBuffer& out, const Row& row, const TablePart& part);
  void writeCell(OutputBuffer& out, const Place& place, const Row& row);
  void writeContent(OutputBuffer& out, const Place& place, bool isRightToLeft);
  void writeWaiting();

  OutputBuffer& out_;
  StyleSheet& styles_;
  InlineWriter& inlines_;
  const bool isRightToLeft_;

  TablePlan plan_;
  int indent_ = 0;
  std::string textStyle_;
  std::string headingStyle_;
  std::vector<Align> aligns_;
  std::vector<std::string> leads_;  // of each cell of a plain row, up to its text

  StringSink sink_;
  OutputBuffer scratch_;
  std::vector<Waiting> waiting_;
  std::size_t waitingRows_ = 0;
  bool hasHeader_ = false;            // the first row is one
  bool hasWritten_ = false;           // a row
  bool isFirstRow_ = true;            // in its part
  bool hasDirections_ = false;        // the cells of the row state theirs
  std::vector<std::size_t> columns_;  // in which each cell of the row begins
};

}  // namespace scrivalen::document::docx
