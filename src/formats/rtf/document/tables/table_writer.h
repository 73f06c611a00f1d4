#pragma once

#include "document/model/table.h"
#include "document/word/table_plan.h"
#include "formats/rtf/document/inline_writer.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/runs.h"
#include "output/output_buffer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::rtf {

/// Writes tables. The rows of one that is split wait until there are kRowsOfAPart of them; then each part writes them.
class TableWriter {
 public:
  static constexpr std::size_t kRowsOfAPart = 40;

  /// @param out, colors, inlines  not owned; must outlive this object
  /// @param font           the number of the document's font
  /// @param isRightToLeft  whether the first column is on the right
  TableWriter(OutputBuffer& out, const ColorTable& colors, InlineWriter& inlines, int font, bool isRightToLeft);

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

  bool isPlain(const Row& row) const;
  bool hasDirections(const Row& row) const;
  void findColumns(const Row& row);
  /// Of the cells that a part may show, the one after another.
  std::size_t nextCell(std::size_t cell, const TablePart& part) const;
  std::string definitionBegin(bool isRepeated) const;
  std::string plainDefinition(const TablePart& part) const;
  void writePlainRow(const Row& row);
  void writeSplitRow(const Row& row);
  void writeRow(OutputBuffer& out, const Row& row, const TablePart& part);
  void writeDefinition(OutputBuffer& out, const Row& row, const TablePart& part);
  void writeCell(OutputBuffer& out, const Cell& cell, const Row& row, Align align);
  void writeContent(OutputBuffer& out, const Cell& cell, const RunStyle& style, bool isRightToLeft);
  void writeWaiting();

  OutputBuffer& out_;
  const ColorTable& colors_;
  InlineWriter& inlines_;
  const int font_;
  const bool isRightToLeft_;

  TablePlan plan_;
  int indent_ = 0;
  Room room_{};
  std::string cellBorder_;
  std::string paragraph_;  // the words before a row's text
  std::string plain_;      // the definition of a row without any peculiarities, and paragraph_
  std::vector<Align> aligns_;
  std::vector<std::string_view> leads_;  // before the text of each cell of a plain row

  StringSink sink_;
  OutputBuffer scratch_;
  std::vector<Waiting> waiting_;
  std::size_t waitingRows_ = 0;
  bool hasWritten_ = false;
  bool hasDirections_ = false;        // the cells of the row state theirs
  std::vector<std::size_t> columns_;  // in which each cell of the row begins
};

}  // namespace scrivalen::document::rtf
