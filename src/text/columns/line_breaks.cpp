#include "text/columns/line_breaks.h"

#include "text/columns/character_width.h"
#include "text/utf.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace scrivalen {
namespace {

struct CharacterRange {
  std::uint32_t first;
  std::uint32_t last;
};

// Of LineBreak.txt (Unicode 15.0) the ASCII, general and East Asian marks of the classes CL, CP, CJ, EX, IN, IS, NS, PO
// and SY, and closing quotation marks.
constexpr CharacterRange kNeverFirst[] = {
    {0x0021, 0x0022},   {0x0025, 0x0025},   {0x0027, 0x0027},   {0x0029, 0x0029},   {0x002C, 0x002C},
    {0x002E, 0x002F},   {0x003A, 0x003B},   {0x003F, 0x003F},   {0x005D, 0x005D},   {0x007D, 0x007D},
    {0x00BB, 0x00BB},   {0x2019, 0x2019},   {0x201D, 0x201D},   {0x2024, 0x2026},   {0x2030, 0x2037},
    {0x203A, 0x203A},   {0x203C, 0x203D},   {0x2103, 0x2103},   {0x232A, 0x232A},   {0x3001, 0x3002},
    {0x3005, 0x3005},   {0x3009, 0x3009},   {0x300B, 0x300B},   {0x300D, 0x300D},   {0x300F, 0x300F},
    {0x3011, 0x3011},   {0x3015, 0x3015},   {0x3017, 0x3017},   {0x3019, 0x3019},   {0x301B, 0x301C},
    {0x301E, 0x301F},   {0x303B, 0x303C},   {0x3041, 0x3041},   {0x3043, 0x3043},   {0x3045, 0x3045},
    {0x3047, 0x3047},   {0x3049, 0x3049},   {0x3063, 0x3063},   {0x3083, 0x3083},   {0x3085, 0x3085},
    {0x3087, 0x3087},   {0x308E, 0x308E},   {0x3095, 0x3096},   {0x309B, 0x309E},   {0x30A0, 0x30A1},
    {0x30A3, 0x30A3},   {0x30A5, 0x30A5},   {0x30A7, 0x30A7},   {0x30A9, 0x30A9},   {0x30C3, 0x30C3},
    {0x30E3, 0x30E3},   {0x30E5, 0x30E5},   {0x30E7, 0x30E7},   {0x30EE, 0x30EE},   {0x30F5, 0x30F6},
    {0x30FB, 0x30FE},   {0x31F0, 0x31FF},   {0xA015, 0xA015},   {0xFE10, 0xFE16},   {0xFE18, 0xFE19},
    {0xFE36, 0xFE36},   {0xFE38, 0xFE38},   {0xFE3A, 0xFE3A},   {0xFE3C, 0xFE3C},   {0xFE3E, 0xFE3E},
    {0xFE40, 0xFE40},   {0xFE42, 0xFE42},   {0xFE44, 0xFE44},   {0xFE48, 0xFE48},   {0xFE50, 0xFE50},
    {0xFE52, 0xFE57},   {0xFE5A, 0xFE5A},   {0xFE5C, 0xFE5C},   {0xFE5E, 0xFE5E},   {0xFE6A, 0xFE6A},
    {0xFF01, 0xFF01},   {0xFF05, 0xFF05},   {0xFF09, 0xFF09},   {0xFF0C, 0xFF0C},   {0xFF0E, 0xFF0E},
    {0xFF1A, 0xFF1B},   {0xFF1F, 0xFF1F},   {0xFF3D, 0xFF3D},   {0xFF5D, 0xFF5D},   {0xFF60, 0xFF61},
    {0xFF63, 0xFF65},   {0xFF67, 0xFF70},   {0xFF9E, 0xFF9F},   {0xFFE0, 0xFFE0},   {0x16FE0, 0x16FE3},
    {0x1B132, 0x1B132}, {0x1B150, 0x1B152}, {0x1B155, 0x1B155}, {0x1B164, 0x1B167},
};

// Likewise of the classes OP and PR, and opening quotation marks.
constexpr CharacterRange kNeverLast[] = {
    {0x0022, 0x0022}, {0x0024, 0x0024}, {0x0027, 0x0028}, {0x002B, 0x002B}, {0x005B, 0x005C}, {0x007B, 0x007B},
    {0x00AB, 0x00AB}, {0x2018, 0x2018}, {0x201A, 0x201A}, {0x201C, 0x201C}, {0x201E, 0x201E}, {0x2039, 0x2039},
    {0x20A9, 0x20A9}, {0x2329, 0x2329}, {0x3008, 0x3008}, {0x300A, 0x300A}, {0x300C, 0x300C}, {0x300E, 0x300E},
    {0x3010, 0x3010}, {0x3014, 0x3014}, {0x3016, 0x3016}, {0x3018, 0x3018}, {0x301A, 0x301A}, {0x301D, 0x301D},
    {0xFE17, 0xFE17}, {0xFE35, 0xFE35}, {0xFE37, 0xFE37}, {0xFE39, 0xFE39}, {0xFE3B, 0xFE3B}, {0xFE3D, 0xFE3D},
    {0xFE3F, 0xFE3F}, {0xFE41, 0xFE41}, {0xFE43, 0xFE43}, {0xFE47, 0xFE47}, {0xFE59, 0xFE59}, {0xFE5B, 0xFE5B},
    {0xFE5D, 0xFE5D}, {0xFE69, 0xFE69}, {0xFF04, 0xFF04}, {0xFF08, 0xFF08}, {0xFF3B, 0xFF3B}, {0xFF5B, 0xFF5B},
    {0xFF5F, 0xFF5F}, {0xFF62, 0xFF62}, {0xFFE1, 0xFFE1}, {0xFFE5, 0xFFE6},
};

constexpr char32_t kBreakHere = 0x200B;
constexpr char32_t kNeverBreakHere = 0x2060;
constexpr char32_t kNoBreakSpace = 0xA0;

template <std::size_t kSize>
bool isIn(const CharacterRange (&ranges)[kSize], char32_t c) {
  const auto* const range = std::lower_bound(std::begin(ranges), std::end(ranges), c,
                                             [](const CharacterRange& r, char32_t value) { return r.last < value; });
  return range != std::end(ranges) && c >= range->first;
}

// Korean is written with blanks between words.
bool isHangul(char32_t c) {
  return (c >= 0x1100 && c <= 0x11FF) || (c >= 0x3130 && c <= 0x318F) || (c >= 0xA960 && c <= 0xA97F) ||
         (c >= 0xAC00 && c <= 0xD7FF);
}

bool isIdeograph(const VisibleCharacter& c) { return c.columns == 2 && !isHangul(c.first); }

bool mayBreakBetween(const VisibleCharacter& before, const VisibleCharacter& after) {
  if (before.last == kBreakHere) {
    return true;
  }
  return (isIdeograph(before) || isIdeograph(after)) && before.last != kNeverBreakHere &&
         before.first != kNoBreakSpace && after.first != kNoBreakSpace && !isIn(kNeverLast, before.first) &&
         !isIn(kNeverFirst, after.first);
}

const char* endOfAsciiWord(const char* at, const char* end) {
  while (at != end && static_cast<unsigned char>(*at) < 0x80 && *at != ' ') {
    ++at;
  }
  return at;
}

bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }

// How much wider than most letters a character is, in columns.
double excessOf(char c) {
  switch (c) {
    case 'M': return 0.4;
    case 'W':
    case '%':
    case '@': return 0.55;
    default: return isCapital(c) ? 0.18 : 0;
  }
}

// In longer words narrow letters make up for an "m".
double excessInShortWord(char c) { return c == 'm' ? 0.4 : c == 'w' ? 0.2 : 0; }

// A column leaves room for a capital at the beginning of a word.
double widthOf(const Word& word) {
  constexpr std::size_t kShort = 4;
  auto width = static_cast<double>(word.columns);
  for (const char c : word.text) {
    width += excessOf(c) + (word.text.size() <= kShort ? excessInShortWord(c) : 0);
  }
  return isCapital(word.text.front()) ? width - excessOf(word.text.front()) : width;
}

TextExtent extentOfLine(std::string_view line) {
  TextExtent result;
  WordReader reader(line);
  Word word;
  while (reader.next(word)) {
    result.longestWord = std::max(result.longestWord, word.columns);
    result.longestLine += word.blanks + word.columns;
    const double width = widthOf(word);
    result.widestWord = std::max(result.widestWord, width);
    result.widestLine += static_cast<double>(word.blanks) + width;
  }
  return result;
}

}  // namespace

bool WordReader::next(Word& word) {
  const char* const blanks = at_;
  while (at_ != end_ && *at_ == ' ') {
    ++at_;
  }
  if (at_ == end_) {
    return false;
  }
  const char* const begin = at_;
  word.blanks = static_cast<std::size_t>(begin - blanks);
  at_ = endOfAsciiWord(begin, end_);
  word.columns = static_cast<std::size_t>(at_ - begin);
  if (at_ != end_ && *at_ != ' ') {
    readOtherCharacters(begin, word);
  }
  word.text = {begin, static_cast<std::size_t>(at_ - begin)};
  return true;
}

// Reads the rest of a word from its first character on that is not ASCII.
void WordReader::readOtherCharacters(const char* begin, Word& word) {
  if (at_ != begin) {
    --at_;  // a digit may become an emoji
    --word.columns;
  }
  VisibleCharacter before = nextVisibleCharacter(at_, end_);
  word.columns += before.columns;
  while (at_ != end_ && *at_ != ' ') {
    const char* after = at_;
    const VisibleCharacter c = nextVisibleCharacter(after, end_);
    if (mayBreakBetween(before, c)) {
      break;
    }
    word.columns += c.columns;
    before = c;
    at_ = after;
  }
}

LineReader::LineReader(std::string_view text, std::size_t columns) : rest_(text), columns_(columns) {
  while (!rest_.empty() && rest_.back() == '\n') {
    rest_.remove_suffix(1);
  }
  takeLine();
}

void LineReader::takeLine() {
  const std::size_t length = std::min(rest_.find('\n'), rest_.size());
  line_ = rest_.substr(0, length);
  rest_.remove_prefix(std::min(length + 1, rest_.size()));
}

bool LineReader::next(Line& line) {
  if (isAtEnd_) {
    return false;
  }
  line = {};
  const char* const begin = line_.data();
  const bool isLast = rest_.empty();
  WordReader reader(line_);
  Word word;
  while (reader.next(word)) {
    const std::size_t columns = line.columns + word.blanks + word.columns;
    if (!line.text.empty() && columns > columns_) {
      line_.remove_prefix(static_cast<std::size_t>(word.text.data() - begin));
      return true;
    }
    line.columns = columns;
    line.text = {begin, static_cast<std::size_t>(word.text.data() + word.text.size() - begin)};
  }
  isAtEnd_ = isLast;
  takeLine();
  return true;
}

TextExtent extentOf(std::string_view utf8) {
  TextExtent result;
  while (true) {
    const std::size_t length = std::min(utf8.find('\n'), utf8.size());
    const TextExtent line = extentOfLine(utf8.substr(0, length));
    result.longestWord = std::max(result.longestWord, line.longestWord);
    result.longestLine = std::max(result.longestLine, line.longestLine);
    result.widestWord = std::max(result.widestWord, line.widestWord);
    result.widestLine = std::max(result.widestLine, line.widestLine);
    if (length == utf8.size()) {
      return result;
    }
    utf8.remove_prefix(length + 1);
  }
}

}  // namespace scrivalen
