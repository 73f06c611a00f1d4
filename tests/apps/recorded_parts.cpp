#include "recorded_parts.h"

#include "texts.h"

namespace scrivalen::command::test {
namespace {

std::string inQuotes(std::string_view text) {
  return std::string(" '").append(replacedAll<char>(text, "\n", "\\n")).append("'");
}

}  // namespace

void RecordedParts::begin(const std::string& part, const std::string& details) {
  lines_.push_back("Begin" + part + details);
  open_.push_back(part);
}

void RecordedParts::end() {
  lines_.push_back(open_.empty() ? "End of nothing" : "End" + open_.back());
  if (!open_.empty()) {
    open_.pop_back();
  }
}

void RecordedParts::add(const std::string& what, std::string_view text) { lines_.push_back(what + inQuotes(text)); }

void RecordedParts::beginList(bool ordered, int first, bool tight) {
  begin("List", (ordered ? " from " + std::to_string(first) : std::string()) + (tight ? " tight" : ""));
}

void RecordedParts::beginItem(Task task) {
  constexpr const char* kTasks[] = {"", " open", " done"};
  begin("Item", kTasks[static_cast<int>(task)]);
}

void RecordedParts::beginCode(const std::string& language) {
  begin("CodeBlock", language.empty() ? std::string() : inQuotes(language));
}

void RecordedParts::beginCell(Align align) {
  constexpr const char* kAligns[] = {"", " left", " center", " right"};
  begin("Cell", kAligns[static_cast<int>(align)]);
}

void RecordedParts::describeColumn(std::size_t index, const TableColumn& column) {
  constexpr const char* kAligns[] = {"", " left", " center", " right"};
  lines_.push_back("Column " + std::to_string(index) + (column.isText ? " text" : "") +
                   kAligns[static_cast<int>(column.align)] +
                   (column.width > 0 ? " width " + std::to_string(column.width) : std::string()));
}

void RecordedParts::numberCell(std::int64_t digits, int decimals) {
  add("Number", std::to_string(digits) + (decimals > 0 ? "e-" + std::to_string(decimals) : std::string()));
}

void RecordedParts::beginSpan(Span span) {
  constexpr const char* kSpans[] = {"Strong", "Emphasis", "Deleted", "Code"};
  begin(kSpans[static_cast<int>(span)]);
}

void RecordedParts::beginLink(const std::string& address, const std::string& title) {
  begin("Link", " @" + address + (title.empty() ? std::string() : " title" + inQuotes(title)));
}

void RecordedParts::image(const std::string& address, const std::string& alternative) {
  lines_.push_back("Image" + inQuotes(alternative) + " @" + address);
}

}  // namespace scrivalen::command::test
