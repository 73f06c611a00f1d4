#include "formats/pdf/typeset/text/line_ends.h"

#include "text/ascii.h"
#include "text/utf.h"

namespace scrivalen::typeset {
namespace {

constexpr std::string_view kSignsBeforeNames = ".:/";
constexpr std::string_view kSignsInWords = ",;:./\\_-?&=|+*#~";

bool isSignOf(std::string_view signs, char c) { return signs.find(c) != std::string_view::npos; }

bool isNameAt(std::string_view text, std::size_t at) {
  const char* place = text.data() + at;
  char32_t c = kReplacement;
  nextUtf8(place, text.data() + text.size(), c);
  const BreakClass own = breakClassOf(c);
  return own == BreakClass::AL || own == BreakClass::HL || own == BreakClass::NU;
}

// Letters other than ASCII's are taken for letters, whatever they are.
bool isLetterOrDigit(char c) { return isAsciiLetter(c) || isAsciiDigit(c) || static_cast<unsigned char>(c) >= 0x80; }

}  // namespace

bool LineEnds::next(LineBreak& place) {
  if (!coming_) {
    LineBreak found;
    do {
      if (!breaks_.next(found)) {
        return false;
      }
    } while (!found.isForced && isInName(found.at));
    coming_ = found;
  }
  if (const auto sign = nextSignAfterBlank(coming_->at)) {
    place = {*sign, false};
  } else {
    place = *coming_;
    coming_.reset();
  }
  begin_ = place.at;
  return true;
}

// Whether a place is between "+" and "+", after hyphens that follow no word, or after signs that follow a blank.
bool LineEnds::isInName(std::size_t at) const {
  if (at == 0 || at >= text_.size()) {
    return false;
  }
  if (text_[at - 1] == '+') {
    return text_[at] == '+';
  }
  const bool isHyphen = text_[at - 1] == '-';
  const std::string_view signs = isHyphen ? "-" : kSignsBeforeNames;
  const std::size_t before = text_.substr(0, at).find_last_not_of(signs);
  if (before == at - 1) {
    return false;
  }
  return before == std::string_view::npos || text_[before] == ' ' || (isHyphen && !isLetterOrDigit(text_[before]));
}

// UAX 14 keeps such a sign beside the word before it, even after blanks (LB13), as if it ended a sentence.
std::optional<std::size_t> LineEnds::nextSignAfterBlank(std::size_t end) const {
  const std::string_view part = text_.substr(0, end);
  for (std::size_t blank = part.find(' ', begin_); blank < end; blank = part.find(' ', blank + 1)) {
    const std::size_t name = part.find_first_not_of(kSignsBeforeNames, blank + 1);
    if (name > blank + 1 && name < end && isNameAt(part, name)) {
      return blank + 1;
    }
  }
  return std::nullopt;
}

std::size_t endAfterSign(std::string_view word, std::size_t begin, std::size_t end) {
  for (std::size_t at = end; at > begin + (end - begin) / 2; --at) {
    if (isSignOf(kSignsInWords, word[at - 1]) && isLetterOrDigit(word[at])) {
      return at;
    }
  }
  return end;
}

}  // namespace scrivalen::typeset
