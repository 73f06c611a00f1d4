#include "text/direction.h"

#include "text/utf.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace scrivalen {
namespace {

struct DirectedRange {
  char32_t first;
  char32_t last;
  Direction direction;
};

constexpr Direction kNeutral = Direction::Neutral;
constexpr Direction kRight = Direction::RightToLeft;

// What is not written from left to right, from UnicodeData.txt's bidirectional classes (Unicode 15.0): R and AL, and
// those of no direction, or of numbers. A range may contain marks and unassigned numbers. Symbols among the letters of
// other scripts are left out: in running text they are beside a letter of theirs.
constexpr DirectedRange kRanges[] = {
    {0x0000, 0x0040, kNeutral},   {0x005B, 0x0060, kNeutral},   {0x007B, 0x00A9, kNeutral},
    {0x00AB, 0x00B4, kNeutral},   {0x00B6, 0x00B9, kNeutral},   {0x00BB, 0x00BF, kNeutral},
    {0x00D7, 0x00D7, kNeutral},   {0x00F7, 0x00F7, kNeutral},   {0x02B9, 0x02BA, kNeutral},
    {0x02C2, 0x02CF, kNeutral},   {0x02D2, 0x02DF, kNeutral},   {0x02E5, 0x02ED, kNeutral},
    {0x02EF, 0x036F, kNeutral},   {0x0374, 0x0375, kNeutral},   {0x037E, 0x037E, kNeutral},
    {0x0384, 0x0385, kNeutral},   {0x0387, 0x0387, kNeutral},   {0x03F6, 0x03F6, kNeutral},
    {0x058A, 0x058F, kNeutral},   {0x0590, 0x05FF, kRight},     {0x0600, 0x0607, kNeutral},
    {0x0608, 0x0608, kRight},     {0x0609, 0x060A, kNeutral},   {0x060B, 0x060B, kRight},
    {0x060C, 0x060C, kNeutral},   {0x060D, 0x060D, kRight},     {0x060E, 0x060F, kNeutral},
    {0x0610, 0x065F, kRight},     {0x0660, 0x066C, kNeutral},   {0x066D, 0x06DC, kRight},
    {0x06DD, 0x06DE, kNeutral},   {0x06DF, 0x06E8, kRight},     {0x06E9, 0x06E9, kNeutral},
    {0x06EA, 0x06EF, kRight},     {0x06F0, 0x06F9, kNeutral},   {0x06FA, 0x07F5, kRight},
    {0x07F6, 0x07F9, kNeutral},   {0x07FA, 0x088F, kRight},     {0x0890, 0x0891, kNeutral},
    {0x0892, 0x08E1, kRight},     {0x08E2, 0x08E2, kNeutral},   {0x08E3, 0x08FF, kRight},
    {0x1FBD, 0x1FBD, kNeutral},   {0x1FBF, 0x1FC1, kNeutral},   {0x2000, 0x200D, kNeutral},
    {0x200F, 0x200F, kRight},     {0x2010, 0x2070, kNeutral},   {0x2074, 0x207E, kNeutral},
    {0x2080, 0x208E, kNeutral},   {0x20A0, 0x2101, kNeutral},   {0x2103, 0x2106, kNeutral},
    {0x2108, 0x2109, kNeutral},   {0x2114, 0x2114, kNeutral},   {0x2116, 0x2118, kNeutral},
    {0x211E, 0x2123, kNeutral},   {0x2140, 0x2144, kNeutral},   {0x214A, 0x214D, kNeutral},
    {0x2150, 0x215F, kNeutral},   {0x2189, 0x2335, kNeutral},   {0x237B, 0x2394, kNeutral},
    {0x2396, 0x249B, kNeutral},   {0x24EA, 0x26AB, kNeutral},   {0x26AD, 0x27FF, kNeutral},
    {0x2900, 0x2BFF, kNeutral},   {0x2E00, 0x3004, kNeutral},   {0x3008, 0x3020, kNeutral},
    {0x3030, 0x3030, kNeutral},   {0x3036, 0x3037, kNeutral},   {0x303D, 0x303F, kNeutral},
    {0x309B, 0x309C, kNeutral},   {0x30A0, 0x30A0, kNeutral},   {0x30FB, 0x30FB, kNeutral},
    {0x31C0, 0x31E3, kNeutral},   {0xFB1D, 0xFB28, kRight},     {0xFB29, 0xFB29, kNeutral},
    {0xFB2A, 0xFD3D, kRight},     {0xFD3E, 0xFD4F, kNeutral},   {0xFD50, 0xFDCE, kRight},
    {0xFDCF, 0xFDCF, kNeutral},   {0xFDF0, 0xFDFC, kRight},     {0xFDFD, 0xFE6B, kNeutral},
    {0xFE70, 0xFEFE, kRight},     {0xFEFF, 0xFEFF, kNeutral},   {0xFF01, 0xFF20, kNeutral},
    {0xFF3B, 0xFF40, kNeutral},   {0xFF5B, 0xFF65, kNeutral},   {0xFFE0, 0xFFFD, kNeutral},
    {0x10800, 0x1091E, kRight},   {0x1091F, 0x1091F, kNeutral}, {0x10920, 0x10B38, kRight},
    {0x10B39, 0x10B3F, kNeutral}, {0x10B40, 0x10D2F, kRight},   {0x10D30, 0x10E7F, kNeutral},
    {0x10E80, 0x10FFF, kRight},   {0x1D7CE, 0x1D7FF, kNeutral}, {0x1E800, 0x1EEEF, kRight},
    {0x1EEF0, 0x1F10F, kNeutral}, {0x1F300, 0x1FBF9, kNeutral},
};

constexpr bool isInOrder() {
  for (std::size_t i = 1; i < std::size(kRanges); ++i) {
    if (kRanges[i].first <= kRanges[i - 1].last) {
      return false;
    }
  }
  return true;
}
static_assert(isInOrder());

// U+0590, the first character that is written from right to left, and all after it begin with such a byte in UTF-8.
constexpr unsigned char kFirstLead = 0xD6;

// Past the ASCII characters at the begin, eight at a time.
const char* skipAscii(const char* at, const char* end) {
  constexpr std::uint64_t kTopBits = 0x8080808080808080;
  for (; end - at >= 8; at += 8) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
    if ((bytes & kTopBits) != 0) {
      break;
    }
  }
  return at;
}

}  // namespace

Direction directionOf(char32_t c) {
  const auto* const range =
      std::lower_bound(std::begin(kRanges), std::end(kRanges), c,
                       [](const DirectedRange& before, char32_t value) { return before.last < value; });
  return range != std::end(kRanges) && range->first <= c ? range->direction : Direction::LeftToRight;
}

Direction firstDirection(std::string_view utf8) {
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  Direction direction = Direction::Neutral;
  while (at != end && direction == Direction::Neutral) {
    char32_t c = 0;
    nextUtf8(at, end, c);
    direction = directionOf(c);
  }
  return direction;
}

bool hasRightToLeft(std::string_view utf8) {
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  while (at != end) {
    at =
        std::find_if(skipAscii(at, end), end, [](char byte) { return static_cast<unsigned char>(byte) >= kFirstLead; });
    char32_t c = 0;
    if (at != end && nextUtf8(at, end, c) && directionOf(c) == Direction::RightToLeft) {
      return true;
    }
  }
  return false;
}

std::size_t runLength(std::string_view utf8, Direction base, Direction& direction) {
  const char* const begin = utf8.data();
  const char* const end = begin + utf8.size();
  const char* at = begin;
  const char* afterStrong = begin;
  direction = Direction::Neutral;
  while (at != end) {
    const char* const character = at;
    char32_t c = 0;
    nextUtf8(at, end, c);
    const Direction found = directionOf(c);
    if (found == Direction::Neutral) {
      continue;
    }
    const bool startsAtBase = direction == Direction::Neutral && character != begin && found != base;
    if (startsAtBase || (direction != Direction::Neutral && found != direction)) {
      const bool keepsNeutrals = startsAtBase || direction == base;
      direction = startsAtBase ? base : direction;
      return static_cast<std::size_t>((keepsNeutrals ? character : afterStrong) - begin);
    }
    direction = found;
    afterStrong = at;
  }
  const bool endsWithStrong = direction != Direction::Neutral && direction != base;
  direction = direction == Direction::Neutral ? base : direction;
  return static_cast<std::size_t>((endsWithStrong ? afterStrong : end) - begin);
}

}  // namespace scrivalen
