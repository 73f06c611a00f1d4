#include "text/line_breaking/line_break_reader.h"

#include "text/utf.h"

namespace scrivalen {
namespace {

using enum BreakClass;

template <typename... Classes>
constexpr bool isOneOf(BreakClass own, Classes... classes) {
  return ((own == classes) || ...);
}

constexpr bool isLetter(BreakClass own) { return isOneOf(own, AL, HL); }
constexpr bool isOpening(BreakClass own) { return isOneOf(own, OP, OPWide); }
constexpr bool isClosing(BreakClass own) { return isOneOf(own, CL, CP, CPWide); }
constexpr bool isIdeograph(BreakClass own) { return isOneOf(own, ID, IDNew, EB, EM); }
constexpr bool isHangul(BreakClass own) { return isOneOf(own, JL, JV, JT, H2, H3); }
constexpr bool isAffix(BreakClass own) { return isOneOf(own, PR, PO); }
constexpr bool isLineEnd(BreakClass own) { return isOneOf(own, BK, CR, LF, NL); }
constexpr bool isMark(BreakClass own) { return isOneOf(own, CM, ZWJ); }

}  // namespace

BreakClass breakClassOf(char32_t c) {
  const std::size_t block = kBreakClassIndex[c / kBreakClassBlock];
  return static_cast<BreakClass>(kBreakClasses[block * kBreakClassBlock + c % kBreakClassBlock]);
}

LineBreakReader::Character LineBreakReader::read(std::size_t at) const {
  const char* position = text_.data() + at;
  char32_t c = kReplacement;
  nextUtf8(position, text_.data() + text_.size(), c);
  return {breakClassOf(c), static_cast<std::size_t>(position - text_.data())};
}

bool LineBreakReader::next(LineBreak& place) {
  if (isAtEnd_ || text_.empty()) {
    return false;
  }
  while (at_ < text_.size()) {
    const Character character = read(at_);
    const bool isEndOfLine = hasBegun_ && !hasBlanks_ && isLineEnd(last_);
    const bool isForced = isEndOfLine && !(last_ == CR && character.own == LF);
    const bool isAllowed = hasBegun_ && isAllowedBefore(character.own);
    const bool isPrefix = isAllowed && isOpening(character.own) && isAffix(last_) && !hasBlanks_;
    const std::size_t here = at_;
    const bool isPlace = isForced || (isAllowed && !(isPrefix && isNumberAhead(character.end)));
    if (isForced) {
      hasBegun_ = false;
    }
    take(character.own);
    at_ = character.end;
    if (isPlace) {
      place = {here, isForced};
      return true;
    }
  }
  isAtEnd_ = true;
  place = {at_, isLineEnd(last_) && !hasBlanks_};
  return true;
}

// LB25: a prefix belongs to a number in brackets.
bool LineBreakReader::isNumberAhead(std::size_t at) const {
  while (at < text_.size()) {
    const Character character = read(at);
    if (!isMark(character.own)) {
      return character.own == NU;
    }
    at = character.end;
  }
  return false;
}

// Takes a character into the state. Marks belong to the one before them, if that can have any (LB9, LB10).
void LineBreakReader::take(BreakClass own) {
  const bool canHaveMarks = hasBegun_ && !hasBlanks_ && !isLineEnd(last_) && last_ != ZW;
  isJoined_ = own == ZWJ;
  if (isMark(own)) {
    if (canHaveMarks) {
      return;
    }
    own = AL;
  }
  if (own == SP) {
    if (hasBegun_) {
      hasBlanks_ = true;
    } else {
      // A blank that begins a line has nothing before it that it could separate.
      hasBegun_ = true;
      last_ = beforeLast_ = AL;
      hasBlanks_ = true;
    }
    number_ = Number::None;
    return;
  }
  if (own == NU) {
    number_ = Number::Digits;
  } else if (number_ == Number::Digits && isClosing(own)) {
    number_ = Number::Closed;
  } else if (!(number_ == Number::Digits && isOneOf(own, SY, IS))) {
    number_ = Number::None;
  }
  hasOddFlags_ = own == RI && !(hasBegun_ && !hasBlanks_ && last_ == RI && hasOddFlags_);
  beforeLast_ = hasBegun_ && !hasBlanks_ ? last_ : AL;
  last_ = own;
  hasBlanks_ = false;
  hasBegun_ = true;
}

// Rules LB4 to LB18, and what they leave when there are no blanks between.
bool LineBreakReader::isAllowedBefore(BreakClass next) const {
  if (isLineEnd(next) || next == SP || next == ZW) {
    return false;
  }
  if (last_ == ZW) {
    return true;
  }
  if (hasBlanks_) {
    return isAllowedAfterBlanks(next);
  }
  if (isJoined_ || isMark(next)) {
    return false;
  }
  if (next == WJ || last_ == WJ || last_ == GL) {
    return false;
  }
  if (next == GL) {
    return isOneOf(last_, BA, HY);
  }
  if (isClosing(next) || isOneOf(next, EX, IS, SY) || isOpening(last_)) {
    return false;
  }
  if ((last_ == QU && isOpening(next)) || (isClosing(last_) && next == NS) || (last_ == B2 && next == B2)) {
    return false;
  }
  if (next == QU || last_ == QU) {
    return false;
  }
  if (next == CB || last_ == CB) {
    return true;
  }
  if (isOneOf(next, BA, HY, NS) || last_ == BB || (beforeLast_ == HL && isOneOf(last_, HY, BA)) ||
      (last_ == SY && next == HL) || next == IN) {
    return false;
  }
  if ((isLetter(last_) && next == NU) || (last_ == NU && isLetter(next))) {
    return false;
  }
  if ((last_ == PR && isIdeograph(next)) || (isIdeograph(last_) && next == PO)) {
    return false;
  }
  if ((isAffix(last_) && isLetter(next)) || (isLetter(last_) && isAffix(next))) {
    return false;
  }
  if (next == NU && (isAffix(last_) || isOneOf(last_, HY, NU) || number_ == Number::Digits)) {
    return false;
  }
  if (isAffix(next) && number_ != Number::None) {
    return false;
  }
  if ((last_ == JL && isOneOf(next, JL, JV, H2, H3)) || (isOneOf(last_, JV, H2) && isOneOf(next, JV, JT)) ||
      (isOneOf(last_, JT, H3) && next == JT)) {
    return false;
  }
  if ((isHangul(last_) && next == PO) || (last_ == PR && isHangul(next))) {
    return false;
  }
  if ((isLetter(last_) || last_ == IS) && isLetter(next)) {
    return false;
  }
  if (((isLetter(last_) || last_ == NU) && next == OP) || (last_ == CP && (isLetter(next) || next == NU))) {
    return false;
  }
  if (last_ == RI && next == RI) {
    return !hasOddFlags_;
  }
  return !(isOneOf(last_, EB, IDNew) && next == EM);
}

// Where blanks are between, few characters hold on to each other (LB8, LB11 to LB17).
bool LineBreakReader::isAllowedAfterBlanks(BreakClass next) const {
  if (next == WJ || isClosing(next) || isOneOf(next, EX, IS, SY) || isOpening(last_)) {
    return false;
  }
  if (last_ == QU && isOpening(next)) {
    return false;
  }
  return !(isClosing(last_) && next == NS) && !(last_ == B2 && next == B2);
}

}  // namespace scrivalen
