#include "text/case_folding/case_folding.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>

using scrivalen::foldCase;
using scrivalen::foldCaseFully;

namespace {

// Calls a function with each character of CaseFolding.txt that has one of the statuses, as in "00B5; C; 03BC; # MICRO
// SIGN", and with the characters into which it is folded.
template <typename Take>
void forEachFolding(std::string_view statuses, Take take) {
  std::ifstream file(SCRIVALEN_CASE_FOLDING, std::ios::binary);
  EXPECT_TRUE(file) << SCRIVALEN_CASE_FOLDING;
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    std::string letter;
    std::string status;
    if (!(words >> letter >> status) || letter[0] == '#' || statuses.find(status[0]) == statuses.npos) {
      continue;
    }
    std::u32string folded;
    for (std::string code; words >> code && code != "#";) {
      folded.push_back(static_cast<char32_t>(std::stoul(code, nullptr, 16)));
    }
    take(static_cast<char32_t>(std::stoul(letter, nullptr, 16)), folded);
  }
}

std::map<char32_t, char32_t> simpleFoldings() {
  std::map<char32_t, char32_t> foldings;
  forEachFolding("CS", [&foldings](char32_t letter, const std::u32string& folded) { foldings[letter] = folded[0]; });
  return foldings;
}

std::string utf8Of(std::u32string_view text) {
  std::string utf8;
  for (const char32_t c : text) {
    char bytes[4];
    utf8.append(bytes, scrivalen::putUtf8(c, bytes));
  }
  return utf8;
}

std::map<std::string, std::string> fullFoldings() {
  std::map<std::string, std::string> foldings;
  forEachFolding("F", [&foldings](char32_t letter, const std::u32string& folded) {
    foldings[utf8Of(std::u32string(1, letter))] = utf8Of(folded);
  });
  return foldings;
}

}  // namespace

TEST(FoldCase, IsTheSimpleFoldingOfUnicode) {
  const std::map<char32_t, char32_t> foldings = simpleFoldings();
  EXPECT_GT(foldings.size(), 1400u);
  for (char32_t c = 0; c < 0x110000; ++c) {
    const auto known = foldings.find(c);
    ASSERT_EQ(foldCase(c), known == foldings.end() ? c : known->second) << std::hex << static_cast<unsigned long>(c);
  }
}

TEST(FoldCase, MakesTextsEqualThatDifferInCaseOnly) {
  EXPECT_EQ(foldCase("SUMME"), "summe");
  EXPECT_EQ(foldCase("ΟΔΟΣ"), foldCase("οδος"));
  EXPECT_EQ(foldCase("οδός"), foldCase("οδόσ"));
  EXPECT_EQ(foldCase("Ǆ"), foldCase("ǅ"));
  EXPECT_EQ(foldCase("STRAẞE"), foldCase("straße"));
  EXPECT_EQ(foldCase("\u212A"), "k");  // KELVIN SIGN
  EXPECT_EQ(foldCase("𐐀"), foldCase("𐐨"));
}

TEST(FoldCase, KeepsOtherTextsApart) {
  EXPECT_EQ(foldCase("1 {é} 中"), "1 {é} 中");
  EXPECT_NE(foldCase("ı"), foldCase("i"));
  EXPECT_EQ(foldCase(""), "");
}

TEST(FoldCaseFully, IsTheFullFoldingOfUnicode) {
  const std::map<std::string, std::string> foldings = fullFoldings();
  EXPECT_GT(foldings.size(), 100u);
  for (const auto& [letter, folded] : foldings) {
    EXPECT_EQ(foldCaseFully(letter), folded);
  }
  EXPECT_EQ(foldCaseFully("STRAẞE, STRASSE"), "strasse, strasse");
  EXPECT_EQ(foldCaseFully("A\xFFz"), "a\xEF\xBF\xBDz");
}

TEST(FoldCase, ReplacesWhatIsNoUtf8) { EXPECT_EQ(foldCase("A\xFFz"), "a\xEF\xBF\xBDz"); }
