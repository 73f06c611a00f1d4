#pragma once

#include "document/word/word_tables.h"
#include "formats/docx/parts/styles.h"
#include "formats/docx/tables/table_look.h"
#include "formats/docx/text/inline_writer.h"
#include "output/output_buffer.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::document::docx {

/// Writes tables.
class TableWriter : public WordTables {
 public:
  /// @param out, styles, inlines  not owned; must outlive this object
  /// @param isRightToLeft         whether the first column is on the right
  /// @param look                  of a document with a reference
  TableWriter(OutputBuffer& out, StyleSheet& styles, InlineWriter& inlines, bool isRightToLeft,
              std::optional<TableLook> look)
      : WordTables(out, inlines, isRightToLeft), styles_(styles), inlines_(inlines), look_(std::move(look)) {}

  double letterWidth() const override { return look_ ? look_->letterWidth : 1; }

 private:
  bool isPlain(const Row& row) const override;
  void prepare() override;
  void writeBegin(const TablePart& part) override;
  void writeEnd() override;
  void writePlainRow(const Row& row) override;
  void writeRow(OutputBuffer& out, const Row& row, const Places& places) override;
  void writeCell(OutputBuffer& out, const Row& row, const Place& place) override;
  void renumber(std::string& rows) override { inlines_.renumberPictures(rows); }
  void writeLook();
  void writeShade(OutputBuffer& out, const Row& row, const Place& place);
  void writeContent(const Place& place);

  StyleSheet& styles_;
  InlineWriter& inlines_;
  const std::optional<TableLook> look_;
  std::string textStyle_;
  std::string headingStyle_;
  std::vector<std::string> leads_;  // of each cell of a plain row, up to its text
};

}  // namespace scrivalen::document::docx
