#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

namespace scrivalen::xlsx {

/// Makes the names of a workbook's sheets: without characters that must not be in one, cut to 31 UTF-16 code units, and
/// different from each other whatever their case.
class SheetNames {
 public:
  /// @param wish  clean UTF-8; empty for the next of Sheet1, Sheet2, ...
  std::string next(std::string_view wish);

 private:
  bool claim(const std::string& name);

  std::unordered_set<std::string> used_;  // in lower case
  std::size_t sheets_ = 0;
};

}  // namespace scrivalen::xlsx
