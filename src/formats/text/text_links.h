#pragma once

#include "document/model/event.h"
#include "document/model/table.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <set>
#include <string>
#include <string_view>

namespace scrivalen::text {

/// Whether a reader of a link's text misses its address: not if the text is the address, perhaps without its scheme, or
/// the link leads inside the document.
bool needsAddress(std::string_view text, std::string_view address);

/// The addresses of the links in a table. They would make its columns too wide, so they are listed after it.
class TableLinks : public document::EventSink {
 public:
  /// Lists the links of a cell.
  void add(const document::Cell& cell);
  /// Part of a cell's content.
  void write(const document::Event& event) override;

  /// "text (address)", each once, in the order of the table.
  const std::deque<std::string>& lines() const { return lines_; }
  /// How many links were left out because the list was full.
  std::uint64_t leftOut() const { return leftOut_; }
  void clear();

 private:
  void addLine();

  std::string text_;
  std::string address_;
  std::deque<std::string> lines_;  // its strings stay where they are: known_ refers to them
  std::set<std::string_view> known_;
  std::size_t bytes_ = 0;
  std::uint64_t leftOut_ = 0;
};

}  // namespace scrivalen::text
