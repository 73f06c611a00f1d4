#include "text/letters.h"

#include <gtest/gtest.h>

#include <utility>

using scrivalen::platform::toCapital;

TEST(ToCapital, KnowsTheAlphabetsOfEurope) {
  constexpr std::pair<wchar_t, wchar_t> kPairs[] = {
      {L'a', L'A'},     {L'z', L'Z'},     {0x00E9, 0x00C9}, {0x00FE, 0x00DE}, {0x00FF, 0x0178},
      {0x0101, 0x0100}, {0x0131, L'I'},   {0x0142, 0x0141}, {0x0161, 0x0160}, {0x017E, 0x017D},
      {0x0219, 0x0218}, {0x03AC, 0x0386}, {0x03AD, 0x0388}, {0x03B1, 0x0391}, {0x03CC, 0x038C},
      {0x03CE, 0x038F}, {0x0430, 0x0410}, {0x0451, 0x0401}, {0x0491, 0x0490}, {0x0561, 0x0531}};
  for (const auto& [letter, capital] : kPairs) {
    EXPECT_EQ(toCapital(letter), capital) << static_cast<int>(letter);
  }
}

TEST(ToCapital, LeavesEverythingElse) {
  for (const wchar_t c : {L'A', L'1', L'{', L'`', wchar_t{0x00F7}, wchar_t{0x0100}, wchar_t{0x4E2D}}) {
    EXPECT_EQ(toCapital(c), c);
  }
}
