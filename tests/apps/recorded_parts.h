#pragma once

#include "readers/table_sink.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command::test {

using Lines = std::vector<std::string>;

/// Records what a reader finds, a line for each call: the part, then what is known of it.
class RecordedParts : public TableSink {
 public:
  void beginHeading(int level, const std::string& id) override {
    begin("Heading", " " + std::to_string(level) + (id.empty() ? "" : " #" + id));
  }
  void beginParagraph() override { begin("Paragraph"); }
  void beginQuote() override { begin("Quote"); }
  void beginList(bool ordered, int first, bool tight) override;
  void beginItem(Task task) override;
  void beginCode(const std::string& language) override;
  void beginTable() override { begin("Table"); }
  void beginRow(bool header) override { begin("Row", header ? " header" : ""); }
  void beginCell(Align align) override;
  void beginSpan(Span span) override;
  void beginLink(const std::string& address, const std::string& title) override;
  void end() override;

  void text(std::string_view text) override { add("Text", text); }
  void cell(std::string_view text) override { add("Cell", text); }
  void rule() override { lines_.emplace_back("Rule"); }
  void image(const std::string& address, const std::string& alternative) override;
  void markup(std::string_view html) override { add("Markup", html); }

  void describeColumn(std::size_t index, const TableColumn& column) override;
  void numberCell(std::int64_t digits, int decimals) override;
  void dateCell(std::int32_t days) override { add("Date", std::to_string(days)); }
  void warn(const std::string& text) override { add("Warning", text); }

  const Lines& lines() const { return lines_; }

 private:
  void begin(const std::string& part, const std::string& details = {});
  void add(const std::string& what, std::string_view text);

  Lines lines_;
  Lines open_;
};

}  // namespace scrivalen::command::test
