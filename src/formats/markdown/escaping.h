#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::markdown {

/// Where a text is, as far as it decides what would be markup in it.
enum class Place { Line, Heading, Cell };

/// Writes text in GitHub Flavored Markdown so that nothing in it is markup. A character gets a backslash only where it
/// could mean something: whether it does may depend on the characters before it, which an escaper remembers, and after
/// it.
class Escaper {
 public:
  /// The most bytes that a byte of text becomes.
  static constexpr std::size_t kGrowth = 4;

  explicit Escaper(Place place = Place::Line) : place_(place) {}

  /// The text continues at the beginning of a line.
  void beginLine() {
    before_.clear();
    start_ = place_ == Place::Line ? Start::First : Start::Past;
  }
  /// The text continues after something else, such as a mark.
  void continueAfter(char c) {
    before_.assign(1, c);
    start_ = Start::Past;
  }

  /// Writes the first @p size bytes of a text in place; those after them are only looked at. Where the text ends, it
  /// may continue with anything.
  /// @param text  in a cell a line feed is a line break; elsewhere there is none
  /// @return the end
  char* put(char* out, std::string_view text, std::size_t size);

 private:
  enum class Start { First, Number, Past };

  bool isMarkup(std::string_view text, std::size_t at, std::size_t size) const;
  bool isMarkupAtStart(std::string_view text, std::size_t at);
  /// The character before a place; 0 at the beginning.
  char before(std::string_view text, std::size_t at, std::size_t distance) const;
  bool follows(std::string_view text, std::size_t at, std::string_view word) const;
  void remember(std::string_view text);

  Place place_;
  Start start_ = Start::Past;
  std::string before_;  // the last characters that were written
};

}  // namespace scrivalen::markdown
