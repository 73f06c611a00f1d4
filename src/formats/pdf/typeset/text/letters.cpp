#include "formats/pdf/typeset/text/letters.h"

#include "formats/pdf/typeset/fonts/font_file.h"
#include "text/utf.h"

namespace scrivalen::typeset {
namespace {

constexpr char32_t kJoinerSign = 0x200D;

// More letters than any conjunct or sequence of emoji has are divided all the same.
constexpr int kMostJoined = 16;

bool isHalfOfFlag(char32_t c) { return c >= 0x1F1E6 && c <= 0x1F1FF; }
bool isSkinColor(char32_t c) { return c >= 0x1F3FB && c <= 0x1F3FF; }

}  // namespace

std::size_t endOfLetter(std::string_view text, std::size_t at) {
  const char* place = text.data() + at;
  const char* const end = text.data() + text.size();
  char32_t before = kReplacement;
  nextUtf8(place, end, before);
  bool isWholeFlag = !isHalfOfFlag(before);
  int joined = 0;
  for (const char* next = place; next != end; place = next) {
    char32_t c = kReplacement;
    nextUtf8(next, end, c);
    if (isHalfOfFlag(before) && isHalfOfFlag(c) && !isWholeFlag) {
      isWholeFlag = true;
    } else if (!isMark(c) && !isInvisible(c) && !isSkinColor(c)) {
      if ((before != kJoinerSign && !isVirama(before)) || ++joined == kMostJoined) {
        break;
      }
    }
    before = c;
  }
  return static_cast<std::size_t>(place - text.data());
}

}  // namespace scrivalen::typeset
