#pragma once

#include <cstddef>
#include <string_view>

// Where a line of UTF-8 may be broken, for a monospaced font.
namespace scrivalen {

/// A part of a line that is never broken.
struct Word {
  std::string_view text;
  std::size_t columns = 0;
  std::size_t blanks = 0;  ///< before it
};

/// Reads the words of one line: they end at blanks, after U+200B, and beside East Asian ideographs, kana and emoji,
/// unless a punctuation mark is there that must not begin or end a line.
class WordReader {
 public:
  /// @param line  not owned; without line feeds
  explicit WordReader(std::string_view line) : at_(line.data()), end_(line.data() + line.size()) {}

  /// @return false at the end. Blanks at the end of the line are no word.
  bool next(Word& word);

 private:
  void readOtherCharacters(const char* begin, Word& word);

  const char* at_;
  const char* end_;
};

/// What a text needs, in columns.
struct TextExtent {
  std::size_t longestWord = 0;
  std::size_t longestLine = 0;
};

/// @param utf8  a line feed ends a line
TextExtent extentOf(std::string_view utf8);

}  // namespace scrivalen
