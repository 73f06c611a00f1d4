#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace scrivalen::xlsx {

/// Makes the names of a workbook's sheets: without characters that must not be in one, cut to 31 UTF-16 code units, and
/// different from each other whatever their case and width.
class SheetNames {
 public:
  /// @param wish  clean UTF-8; empty for the next of Sheet1, Sheet2, ...
  std::string next(std::string_view wish);

 private:
  bool claim(std::string_view name);

  std::unordered_set<std::string> used_;                  // folded
  std::unordered_map<std::string, std::size_t> numbers_;  // the last ones of names that several sheets wish, folded
  std::size_t sheets_ = 0;
};

}  // namespace scrivalen::xlsx
