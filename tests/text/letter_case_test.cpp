#include "text/letter_case.h"

#include <gtest/gtest.h>

#include <utility>

using scrivalen::toLowerCase;
using scrivalen::toUpperCase;

TEST(ToUpperCase, ConvertsTheAlphabetsOfEurope) {
  constexpr std::pair<char32_t, char32_t> kPairs[] = {
      {L'a', L'A'},     {L'z', L'Z'},     {0x00E9, 0x00C9}, {0x00FE, 0x00DE}, {0x00FF, 0x0178},
      {0x0101, 0x0100}, {0x0131, L'I'},   {0x0142, 0x0141}, {0x0161, 0x0160}, {0x017E, 0x017D},
      {0x0219, 0x0218}, {0x03AC, 0x0386}, {0x03AD, 0x0388}, {0x03B1, 0x0391}, {0x03CC, 0x038C},
      {0x03CE, 0x038F}, {0x0430, 0x0410}, {0x0451, 0x0401}, {0x0491, 0x0490}, {0x0561, 0x0531}};
  for (const auto& [letter, capital] : kPairs) {
    EXPECT_EQ(toUpperCase(letter), capital) << static_cast<int>(letter);
  }
}

TEST(ToUpperCase, LeavesOtherCharactersAlone) {
  for (const char32_t c : {U'A', U'1', U'{', U'`', U'\x00F7', U'\x0100', U'\x4E2D'}) {
    EXPECT_EQ(toUpperCase(c), c);
  }
}

TEST(ToLowerCase, ConvertsEveryCapitalBack) {
  constexpr std::pair<char32_t, char32_t> kPairs[] = {
      {U'A', U'a'},     {U'I', U'i'},     {U'Z', U'z'},     {0x00C9, 0x00E9}, {0x00DE, 0x00FE}, {0x0178, 0x00FF},
      {0x0100, 0x0101}, {0x0141, 0x0142}, {0x0160, 0x0161}, {0x017D, 0x017E}, {0x0218, 0x0219}, {0x0386, 0x03AC},
      {0x0388, 0x03AD}, {0x0391, 0x03B1}, {0x03A3, 0x03C3}, {0x038C, 0x03CC}, {0x038F, 0x03CE}, {0x0410, 0x0430},
      {0x0401, 0x0451}, {0x0490, 0x0491}, {0x0531, 0x0561}};
  for (const auto& [capital, letter] : kPairs) {
    EXPECT_EQ(toLowerCase(capital), letter) << static_cast<int>(capital);
  }
}

TEST(ToLowerCase, LeavesOtherCharactersAlone) {
  for (const char32_t c : {U'a', U'1', U'[', U'@', U'\x00D7', U'\x0101', U'\x4E2D', U'\x1F600'}) {
    EXPECT_EQ(toLowerCase(c), c);
  }
}
