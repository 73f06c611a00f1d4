#pragma once

#include "document/word/word_tables.h"
#include "formats/rtf/document/inline_writer.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/runs.h"
#include "output/output_buffer.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::rtf {

/// Writes tables.
class TableWriter : public WordTables {
 public:
  /// @param out, colors, inlines  not owned; must outlive this object
  /// @param font           the number of the document's font
  /// @param isRightToLeft  whether the first column is on the right
  TableWriter(OutputBuffer& out, const ColorTable& colors, InlineWriter& inlines, int font, bool isRightToLeft);

 private:
  void prepare() override;
  void writeBegin(const TablePart&) override {}
  void writeEnd() override;
  void writePlainRow(const Row& row) override;
  void writeRow(OutputBuffer& out, const Row& row, const Places& places) override;
  void writeCell(OutputBuffer& out, const Row& row, const Place& place) override;

  std::string definitionBegin(bool isRepeated) const;
  std::string plainDefinition() const;
  void writeDefinition(OutputBuffer& out, const Row& row, const Places& places);
  void writeContent(OutputBuffer& out, const Cell& cell, const RunStyle& style, bool isRightToLeft);

  const ColorTable& colors_;
  InlineWriter& inlines_;
  const int font_;

  const std::string cellBorder_;
  std::string paragraph_;                // the words before a row's text
  std::string plain_;                    // the definition of a row without any peculiarities, and paragraph_
  std::vector<std::string_view> leads_;  // before the text of each cell of a plain row
};

}  // namespace scrivalen::document::rtf
