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

/// A line as it is shown: without blanks at its end.
struct Line {
  std::string_view text;
  std::size_t columns = 0;
};

/// Wraps a text. A line ends at a line feed, and before a word that would make it too long.
class LineReader {
 public:
  /// @param text     not owned. Line feeds at its end make no lines
  /// @param columns  of the lines; a longer word is a line of its own
  LineReader(std::string_view text, std::size_t columns);

  /// @return false at the end. An empty text is one empty line.
  bool next(Line& line);
  bool isAtEnd() const { return isAtEnd_; }
  /// Where the next line begins.
  const char* position() const { return line_.data(); }

 private:
  void takeLine();

  std::string_view line_;  // the rest of the line that a line feed ends
  std::string_view rest_;  // what comes after that line feed
  std::size_t columns_;
  bool isAtEnd_ = false;
};

/// What a text needs, in columns.
struct TextExtent {
  std::size_t longestWord = 0;
  std::size_t longestLine = 0;
  /// In a proportional font, of which a column is the width of most letters: words in capitals need more.
  double widestWord = 0;
  double widestLine = 0;
};

/// @param utf8  a line feed ends a line
TextExtent extentOf(std::string_view utf8);

}  // namespace scrivalen
