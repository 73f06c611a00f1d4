#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::help {

/// The characters of a Windows code page that has one byte for each: 874, 1250 to 1258. Of any other, only ASCII.
class CodePage {
 public:
  static constexpr int kWestern = 1252;

  explicit CodePage(int number);

  /// The byte of a character; nothing if there is none.
  std::optional<unsigned char> byteOf(char32_t c) const;

 private:
  std::vector<std::pair<char32_t, unsigned char>> bytes_;  // of the characters above ASCII, sorted
  bool isWestern_;
};

/// Appends markup in a code page. A character that is missing from it becomes a numeric reference.
void appendWithReferences(std::string& bytes, std::string_view utf8, const CodePage& page);

/// Appends plain text in a code page. A character that is missing from it becomes "?".
/// @return how many were missing
std::size_t appendReplaced(std::string& bytes, std::string_view utf8, const CodePage& page);

}  // namespace scrivalen::help
