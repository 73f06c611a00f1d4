#pragma once

#include "document/model/table.h"
#include "document/word/table_plan.h"
#include "document/word/word_inlines.h"
#include "output/output_buffer.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace scrivalen::document {

/// The tables of a word processor's file. The rows of one that is split wait until there are kRowsOfAPart of them; then
/// each part writes them.
class WordTables {
 public:
  static constexpr std::size_t kRowsOfAPart = 40;

  /// @param out, inlines   not owned; must outlive this object
  /// @param isRightToLeft  whether the first column is on the right
  WordTables(OutputBuffer& out, WordInlines& inlines, bool isRightToLeft)
      : out_(out), inlines_(inlines), isRightToLeft_(isRightToLeft), scratch_(sink_) {}
  WordTables(const WordTables&) = delete;
  WordTables& operator=(const WordTables&) = delete;
  virtual ~WordTables() = default;

  /// @param indent  in twips
  void begin(const Table& table, TablePlan plan, int indent);
  void row(const Row& row);
  void end();
  /// How wide letters may be, by those of Arial.
  virtual double letterWidth() const { return 1; }

 protected:
  /// A cell of a row in a part of the table.
  struct Place {
    const Cell* cell;     ///< as this part shows it
    std::size_t columns;  ///< of the part
    int width;            ///< in twips
    int edge;             ///< the right one, in twips from the table's own edge
    Align align;
    bool isRightToLeft;
    std::optional<Rgb> background;
    bool isRepeated;  ///< another part has the same text
  };
  using Places = std::vector<Place>;

  OutputBuffer& out() { return out_; }
  bool isRightToLeft() const { return isRightToLeft_; }
  const TablePlan& plan() const { return plan_; }
  int indent() const { return indent_; }
  /// The alignment of each column, with the sides of the page.
  const std::vector<Align>& aligns() const { return aligns_; }
  /// Whether the first row of the table is a header.
  bool hasHeader() const { return hasHeader_; }
  bool isFirstRow() const { return !hasWritten_; }
  /// Whether the row has letters from right to left, so that its cells state their directions.
  bool hasDirections() const { return hasDirections_; }

  /// Whether a row is written by writePlainRow. It must be one without headers, spans, colours and content other than
  /// text.
  virtual bool isPlain(const Row& row) const;
  void writeCells(OutputBuffer& out, const Row& row, const Places& places);

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
    std::string laterHeaders;  // the same without places, for all but the first rows
    std::string rows;
  };

  /// The table is known, and nothing of it written.
  virtual void prepare() = 0;
  virtual void writeBegin(const TablePart& part) = 0;
  virtual void writeEnd() = 0;
  virtual void writePlainRow(const Row& row) = 0;
  virtual void writeRow(OutputBuffer& out, const Row& row, const Places& places) = 0;
  virtual void writeCell(OutputBuffer& out, const Row& row, const Place& place) = 0;
  /// Gives whatever has a number in a copy of rows one of its own.
  virtual void renumber(std::string&) {}

  bool mayHaveDirections(const Row& row) const;
  void findColumns(const Row& row);
  Places& findPlaces(const Row& row, const TablePart& part);
  void addPlace(const Row& row, std::size_t cell, const TablePart& part);
  std::size_t nextCell(std::size_t cell, const TablePart& part) const;
  void writeSplitRow(const Row& row);
  void writeHeader(const Row& row, std::size_t part);
  void writeTo(std::string& text, const Row& row, const Places& places);
  void writeWaiting();

  OutputBuffer& out_;
  WordInlines& inlines_;
  const bool isRightToLeft_;

  TablePlan plan_;
  int indent_ = 0;
  std::vector<Align> aligns_;
  StringSink sink_;
  OutputBuffer scratch_;
  std::vector<Waiting> waiting_;
  std::size_t waitingRows_ = 0;
  bool hasHeader_ = false;
  bool hasWritten_ = false;
  bool hasDirections_ = false;
  std::vector<std::size_t> columns_;  // in which each cell of the row begins
  Places places_;
};

}  // namespace scrivalen::document
