#pragma once

#include "text/line_breaking/class_table.h"

#include <cstddef>
#include <string_view>

namespace scrivalen {

BreakClass breakClassOf(char32_t c);

/// A place where a line may end.
struct LineBreak {
  std::size_t at = 0;  ///< in bytes
  bool isForced = false;
};

/// Finds where lines of a text may end (Unicode Standard Annex 14, revision 50, with the numbers of its example 7).
class LineBreakReader {
 public:
  /// @param text  clean UTF-8; not owned
  explicit LineBreakReader(std::string_view text) : text_(text) {}

  /// The next place; the last one is the end of the text.
  /// @return false after that, and for an empty text
  bool next(LineBreak& place);

 private:
  // Which part of a number the text before is, in rule LB25.
  enum class Number { None, Digits, Closed };

  struct Character {
    BreakClass own;   // as the table has it
    std::size_t end;  // of its bytes
  };

  Character read(std::size_t at) const;
  bool isNumberAhead(std::size_t at) const;
  bool isAllowedBefore(BreakClass next) const;
  bool isAllowedAfterBlanks(BreakClass next) const;
  void take(BreakClass own);

  std::string_view text_;
  std::size_t at_ = 0;
  bool hasBegun_ = false;  // the line has a character
  bool isAtEnd_ = false;

  // Of the text before at_, with combining marks taken as rule LB9 has it.
  BreakClass last_ = BreakClass::AL;  // the last character but blanks
  BreakClass beforeLast_ = BreakClass::AL;
  bool hasBlanks_ = false;    // after it
  bool isJoined_ = false;     // the last character is U+200D
  bool hasOddFlags_ = false;  // an odd number of regional indicators comes before
  Number number_ = Number::None;
};

}  // namespace scrivalen
