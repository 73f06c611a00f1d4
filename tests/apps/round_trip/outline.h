#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// A document in lines, as far as Markdown can say it: a line for each block, with the style of each character of its
/// text. Two documents with the same outline look the same. The style of blanks does not show, nor do blanks at the
/// ends of lines.
class Outline {
 public:
  /// How a character looks.
  struct Style {
    bool strong = false;
    bool emphasis = false;
    bool deleted = false;
    bool code = false;
    std::string link;  ///< address and title

    bool operator==(const Style&) const = default;
  };

  /// @return where its line ends
  std::size_t beginBlock(const std::string& name);
  /// Adds to the line of a block, at the place that beginBlock returned.
  void complete(std::size_t place, const std::string& name) { lines_.insert(place, name); }
  void endBlock();
  /// Begins a block of text. One that stays empty leaves no line.
  void beginText(const std::string& name, bool mayBeEmpty);
  void endText();
  void text(std::string_view text, const Style& style);
  /// A block without text.
  void add(const std::string& line);

  std::string lines() const { return lines_; }

 private:
  struct Character {
    std::string bytes;
    Style style;
  };

  static std::string nameOf(const Style& style);

  std::string lines_;
  std::string indent_;
  std::string name_;
  bool mayBeEmpty_ = false;
  std::vector<Character> characters_;
};

}  // namespace scrivalen::test
