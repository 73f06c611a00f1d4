#pragma once

#include "document/model/table.h"
#include "document/model/warnings.h"
#include "document/model/writer.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::test {

using Content = std::function<void(document::DocumentWriter&)>;
using SettingValues = std::vector<std::pair<std::string_view, std::string_view>>;

/// What the text writer makes of a document.
struct MadeText {
  std::string bytes;
  std::vector<document::Warning> warnings;
};
MadeText madeText(const Content& content, const SettingValues& settings = {});
std::string writtenText(const Content& content, const SettingValues& settings = {});

/// The bytes of a text in UTF-8.
std::string_view bytes(const char8_t* text);

void put(document::EventSink& sink, document::EventKind kind, std::string_view text = {});
void putParagraph(document::EventSink& sink, std::string_view text, document::Align align = document::Align::Auto);
void putHeading(document::EventSink& sink, int level, std::string_view text);
void putLink(document::EventSink& sink, std::string_view text, std::string_view address);
void putList(document::EventSink& sink, bool tight, const std::vector<std::string_view>& items);

/// A table of texts. The cells refer to texts of the caller.
class MadeTable {
 public:
  using Rows = std::vector<std::vector<std::string_view>>;

  /// @param headers  how many of the first rows are header rows
  MadeTable(const Rows& rows, std::size_t headers);

  document::Column& column(std::size_t index) { return table_.columns[index]; }
  document::Cell& cell(std::size_t row, std::size_t column) { return rows_[row][column]; }
  /// Makes a cell take the columns to its right too, whose cells go.
  void span(std::size_t row, std::size_t column, int columns);
  void write(document::DocumentWriter& writer) const;

 private:
  document::Table table_;
  std::vector<std::vector<document::Cell>> rows_;
  std::size_t headers_;
};

/// A table, as written in a document of its own.
std::string writtenTable(const MadeTable& table, const SettingValues& settings = {});

}  // namespace scrivalen::test
