#include "options/option_group.h"

#include "errors.h"
#include "options/effect.h"
#include "text/ascii.h"
#include "texts.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

namespace scrivalen::command {
namespace {

std::string_view withoutBlanksAround(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t");
  return begin == text.npos ? std::string_view() : text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

// Divides a list at its commas. An entry with a comma is in quotes, as in CSV.
std::vector<std::string> entriesOf(std::string_view list) {
  std::vector<std::string> entries;
  for (bool isLast = false; !isLast;) {
    bool isQuoted = false;
    std::size_t end = 0;
    for (; end < list.size() && (isQuoted || list[end] != ','); ++end) {
      isQuoted = isQuoted != (list[end] == '"');
    }
    std::string_view entry = withoutBlanksAround(list.substr(0, end));
    if (entry.size() > 1 && entry.starts_with('"') && entry.ends_with('"')) {
      entry = entry.substr(1, entry.size() - 2);
    }
    entries.push_back(replacedAll<char>(entry, "\"\"", "\""));
    isLast = end == list.size();
    list.remove_prefix(isLast ? end : end + 1);
  }
  return entries;
}

std::vector<std::string> columnList(const std::string& argument) {
  std::vector<std::string> columns = entriesOf(argument);
  for (const std::string& column : columns) {
    if (column.empty()) {
      throw UsageError("--columns takes names or numbers of columns, such as name,3,5-7, not '" + argument + "'");
    }
  }
  return columns;
}

std::vector<Align> alignList(const std::string& argument) {
  struct Name {
    std::string_view name;
    Align align;
  };
  static constexpr Name kNames[] = {{"", Align::Default},     {"l", Align::Left},      {"left", Align::Left},
                                    {"r", Align::Right},      {"right", Align::Right}, {"c", Align::Center},
                                    {"center", Align::Center}};
  std::vector<Align> aligns;
  for (const std::string& entry : entriesOf(argument)) {
    const std::string wanted = scrivalen::asciiLowered<char>(entry);
    const auto* const found =
        std::find_if(std::begin(kNames), std::end(kNames), [&](const Name& name) { return name.name == wanted; });
    if (found == std::end(kNames)) {
      throw UsageError("--align takes left, right or center (l, r, c) for each column, not '" + entry + "'");
    }
    aligns.push_back(found->align);
  }
  return aligns;
}

double width(std::string_view entry) {
  constexpr double kSmallest = 1e-6;
  constexpr double kGreatest = 1e6;
  double value = 0;
  const char* const end = entry.data() + entry.size();
  const auto result = std::from_chars(entry.data(), end, value, std::chars_format::fixed);
  if (result.ec != std::errc() || result.ptr != end || !(value >= kSmallest && value <= kGreatest)) {
    throw UsageError("--width takes shares such as 3,1,1 or percents such as 60%,20%,20%, not '" + std::string(entry) +
                     "'");
  }
  return value;
}

void readWidths(const std::string& argument, CsvOptions& csv) {
  std::size_t percents = 0;
  std::size_t given = 0;
  for (const std::string& entry : entriesOf(argument)) {
    const bool isPercent = entry.ends_with('%');
    percents += isPercent ? 1 : 0;
    given += entry.empty() ? 0 : 1;
    csv.widths.push_back(entry.empty() ? 0
                                       : width(std::string_view(entry).substr(0, entry.size() - (isPercent ? 1 : 0))));
  }
  if (percents != 0 && percents != given) {
    throw UsageError("--width takes either shares or percents, not both: '" + argument + "'");
  }
  csv.arePercent = percents > 0;
}

class TableOptions : public OptionGroup {
 public:
  explicit TableOptions(Options& options) : options_(options) {}

  std::string_view title() const override { return "Tables of CSV"; }

  std::vector<Option> declare() override {
    return {
        {&columns_, "--columns", "LIST",
         "The columns to show, in this order: names of the header, numbers and ranges, as in name,5,2-4"},
        {&aligns_, "--align", "LIST", "Alignments of the columns that are shown: left, right, center, or l, r, c"},
        {&widths_, "--width", "LIST", "Widths of the columns that are shown: shares such as 3,1,1, or percents"},
        {&options_.csv.isText, "--text", "", "All cells are texts: no numbers, no dates"},
    };
  }

  void interpret() override {
    warnIf(columns_.has_value(), "--columns");
    warnIf(aligns_.has_value(), "--align");
    warnIf(widths_.has_value(), "--width");
    warnIf(options_.csv.isText, "--text");
    requireText("--align", aligns_, "give left, right or center (l, r, c) for each column");
    requireText("--width", widths_, "give shares such as 3,1,1 or percents such as 60%,20%,20%");
    if (columns_) {
      options_.csv.columns = columnList(*columns_);
    }
    if (aligns_) {
      options_.csv.aligns = alignList(*aligns_);
    }
    if (widths_) {
      readWidths(*widths_, options_.csv);
    }
  }

 private:
  void warnIf(bool isGiven, const char* option) {
    if (isGiven) {
      warnWithoutTable(options_, option);
    }
  }

  Options& options_;
  std::optional<std::string> columns_;
  std::optional<std::string> aligns_;
  std::optional<std::string> widths_;
};

}  // namespace

std::unique_ptr<OptionGroup> tableOptions(Options& options) { return std::make_unique<TableOptions>(options); }

}  // namespace scrivalen::command
