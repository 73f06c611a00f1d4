#include "made_text.h"

#include "document/settings/settings.h"
#include "formats/text/text_writer.h"
#include "output/output_buffer.h"
#include "text/columns/line_breaks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace scrivalen::test {

using document::Align;
using document::Event;
using document::EventKind;
using document::EventSink;

namespace {

struct StringSink : ByteSink {
  bool take(const char* data, std::size_t size) override {
    text.append(data, size);
    return true;
  }

  std::string text;
};

}  // namespace

MadeText madeText(const Content& content, const SettingValues& values) {
  document::Settings settings;
  for (const auto& [name, value] : values) {
    std::string reason;
    EXPECT_TRUE(settings.set(name, value, reason)) << reason;
  }
  const document::FormatSettings seen(settings, "text");
  document::Warnings warnings;
  document::OutputWarnings taken(warnings, 0);
  StringSink sink;
  OutputBuffer out(sink);
  const auto writer = text::createTextWriter({out, seen, taken});
  writer->begin();
  content(*writer);
  writer->finish();
  out.flush();
  return {sink.text, warnings.all()};
}

std::string writtenText(const Content& content, const SettingValues& settings) {
  return madeText(content, settings).bytes;
}

std::string_view bytes(const char8_t* text) { return reinterpret_cast<const char*>(text); }

void put(EventSink& sink, EventKind kind, std::string_view text) {
  Event event{kind};
  event.text = text;
  sink.write(event);
}

void putParagraph(EventSink& sink, std::string_view text, Align align) {
  sink.write({EventKind::BeginParagraph, align});
  put(sink, EventKind::Text, text);
  sink.write({EventKind::EndParagraph, align});
}

void putHeading(EventSink& sink, int level, std::string_view text) {
  Event event{EventKind::BeginHeading};
  event.number = level;
  event.text = text;
  event.id = "id";
  sink.write(event);
  put(sink, EventKind::Text, text);
  event.kind = EventKind::EndHeading;
  sink.write(event);
}

void putLink(EventSink& sink, std::string_view text, std::string_view address) {
  Event event{EventKind::BeginLink};
  event.address = address;
  sink.write(event);
  if (!text.empty()) {
    put(sink, EventKind::Text, text);
  }
  event.kind = EventKind::EndLink;
  sink.write(event);
}

void putList(EventSink& sink, bool tight, const std::vector<std::string_view>& items) {
  Event event{EventKind::BeginList};
  event.tight = tight;
  sink.write(event);
  for (const std::string_view item : items) {
    put(sink, EventKind::BeginItem);
    if (tight) {
      put(sink, EventKind::Text, item);
    } else {
      putParagraph(sink, item);
    }
    put(sink, EventKind::EndItem);
  }
  event.kind = EventKind::EndList;
  sink.write(event);
}

MadeTable::MadeTable(const Rows& rows, std::size_t headers) : headers_(headers) {
  for (const auto& row : rows) {
    auto& cells = rows_.emplace_back();
    table_.columns.resize(std::max(table_.columns.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
      cells.emplace_back().text = row[i];
      cells.back().header = rows_.size() <= headers;
      const TextExtent extent = extentOf(row[i]);
      document::Column& column = table_.columns[i];
      column.align = Align::Left;
      column.longestWord = std::max(column.longestWord, extent.longestWord);
      column.longestLine = std::max(column.longestLine, extent.longestLine);
    }
  }
}

void MadeTable::span(std::size_t row, std::size_t column, int columns) {
  auto& cells = rows_[row];
  cells[column].span = columns;
  const auto first = cells.begin() + static_cast<std::ptrdiff_t>(column) + 1;
  cells.erase(first, first + (columns - 1));
}

void MadeTable::write(document::DocumentWriter& writer) const {
  writer.beginTable(table_);
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const bool header = i < headers_;
    writer.row({rows_[i], header, header});
  }
  writer.endTable();
}

std::string writtenTable(const MadeTable& table, const SettingValues& settings) {
  return writtenText([&](document::DocumentWriter& writer) { table.write(writer); }, settings);
}

}  // namespace scrivalen::test
