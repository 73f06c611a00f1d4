#pragma once

#include "formats/markdown/escaping.h"
#include "formats/markdown/lines.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {
class Picture;
}  // namespace scrivalen::document

namespace scrivalen::markdown {

/// What surrounds a part of a text.
enum class Mark : std::uint8_t { Strong, Emphasis, Deleted, Link };

/// Writes the text of a block: escaped text, marks, code, links and pictures.
///
/// Whether asterisks and their like are marks depends on the characters around them (CommonMark 0.30, 6.2). So marks
/// wait until the text after them is known, and the last character before them waits too: where a letter would prevent
/// a mark, it is written as a character reference. Blanks at the edges of what is marked move out of it, and blanks at
/// the ends of lines are left out.
class InlineText {
 public:
  /// @param out, lines  not owned; must outlive this object
  InlineText(OutputBuffer& out, Lines& lines) : out_(out), lines_(lines) {}

  /// Begins the text of a block, or of a cell. Nothing is written before its first content.
  /// @param lead  comes before the text, such as "## "
  void begin(Place place, Block block, std::string_view lead);
  /// Writes the beginning now, though there may be no content.
  void start();
  /// @return whether the text is not empty
  bool end();

  void text(std::string_view text);
  void beginMark(Mark mark);
  void endMark(Mark mark);
  void beginCode() { ++codeDepth_; }
  void endCode() { --codeDepth_; }
  void beginLink(std::string_view address, std::string_view title);
  void endLink();
  /// A link that shows its own address, for which isAutolink is true.
  void autolink(std::string_view text);
  void picture(const document::Picture& picture, std::string_view alternative);
  void raw(std::string_view markup);

 private:
  // Either: a mark's rules take it for a letter or for punctuation, depending on who reads it.
  enum class Kind { Blank, Letter, Punctuation, Either };

  struct Link {
    std::string address;
    std::string title;
  };

  static Kind kindOf(char32_t c);
  /// Of the first character.
  static Kind kindOf(std::string_view text);
  static bool mayBe(Kind kind, Kind which) { return kind == which || (kind == Kind::Either && which != Kind::Blank); }

  void writeText(std::string_view text);
  void writeEscaped(std::string_view text, std::size_t size);
  void writeReference(std::string_view character);
  void writeMarkup(std::string_view markup);
  void writeLast(std::string_view next);
  void writeCode();
  void writeCodeSpan(std::string_view code);

  bool writeMarks(Kind next, bool endsWord = false);
  void writeBeforeMark();
  bool isOpen(Mark mark) const;
  bool isClosingBlocked(Kind last, Kind next) const;
  void joinMarks();
  void writeClosing(bool endsWord);
  void writeGap();
  void writeOpening(char emphasis);
  bool isSpaced() const { return blanks_ > 0 || breaks_ > 0; }
  std::string_view markOf(Mark mark) const;
  void write(std::string_view text) { out_.write(text.data(), text.size()); }

  OutputBuffer& out_;
  Lines& lines_;
  Place place_ = Place::Line;
  Block block_ = Block::Text;
  std::string lead_;
  Escaper escaper_;
  bool isBegun_ = false;
  bool isAtStart_ = true;     // of a line
  bool isAfterCode_ = false;  // directly after a code span
  bool isAlone_ = false;      // the last character, directly after a mark

  std::string last_;             // the last character of the text, which waits
  Kind lastKind_ = Kind::Blank;  // of the last character that was written
  std::vector<Mark> closing_;    // the marks that wait, in their order: those that end,
  std::size_t blanks_ = 0;       // the blanks
  std::size_t breaks_ = 0;       // or line breaks between them,
  std::vector<Mark> opening_;    // and those that begin
  std::array<int, 4> depths_ = {};
  char emphasis_ = '_';

  int codeDepth_ = 0;
  std::string code_;
  Link link_;      // the link that is open, or whose end waits
  Link nextLink_;  // one that begins while that end waits
  std::string joined_;
};

}  // namespace scrivalen::markdown
