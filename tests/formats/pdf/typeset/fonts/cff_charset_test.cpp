#include "formats/pdf/typeset/fonts/cff_charset.h"

#include <gtest/gtest.h>

#include <string>

namespace scrivalen::typeset {
namespace {

using namespace std::string_literals;
using Cids = std::vector<std::uint16_t>;

// A table "CFF " of four glyphs: its header, the name "A", the top dictionary, the charset at 26, the charstrings.
std::string cffWith(const std::string& charset, bool isCidKeyed = true) {
  std::string table = "\1\0\4\1"s + "\0\1\1\1\2A"s + "\0\1\1\1\x0C"s;
  table += isCidKeyed ? "\x8B\x8B\x8B\x0C\x1E"s : "\x8B\x8B\x8B\x0C\x07"s;  // 0 0 0 ROS
  table += "\xA5\x0F"s;                                                     // 26 charset
  table += "\x1C\0"s;
  table += static_cast<char>(26 + charset.size());
  table += "\x11";  // CharStrings
  EXPECT_EQ(table.size(), 26u);
  return table + charset + "\0\4\1\1\2\3\4\5eeee"s;
}

TEST(CffCharset, MayHaveANumberForEachGlyph) { EXPECT_EQ(cidsOf(cffWith("\0\0\5\0\7\1\2"s)), (Cids{0, 5, 7, 258})); }

TEST(CffCharset, MayHaveShortRanges) { EXPECT_EQ(cidsOf(cffWith("\1\0\5\1\1\2\0"s)), (Cids{0, 5, 6, 258})); }

TEST(CffCharset, MayHaveLongRanges) { EXPECT_EQ(cidsOf(cffWith("\2\0\5\1\0"s)), (Cids{0, 5, 6, 7})); }

TEST(CffCharset, IsNoneOfAFontWithNames) { EXPECT_EQ(cidsOf(cffWith("\0\0\5\0\7\1\2"s, false)), Cids()); }

TEST(CffCharset, EndsWithTheTable) {
  const std::string whole = cffWith("\0\0\5\0\7\1\2"s);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_LE(cidsOf(whole.substr(0, size)).size(), 4u) << size;
  }
}

}  // namespace
}  // namespace scrivalen::typeset
