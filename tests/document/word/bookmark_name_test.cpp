#include "document/word/bookmark_name.h"

#include "text/ascii.h"
#include "text/case_folding/case_folding.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <vector>

using scrivalen::document::bookmarkName;

namespace {

// As Word compares names.
std::set<std::string> foldedNamesOf(const std::vector<std::string>& ids) {
  std::set<std::string> names;
  for (const std::string& id : ids) {
    names.insert(scrivalen::foldCase(bookmarkName(id)));
  }
  return names;
}

std::size_t unitsIn(std::string_view text) {
  std::size_t units = 0;
  for (const char* at = text.data(); at != text.data() + text.size();) {
    char32_t c = 0;
    scrivalen::nextUtf8(at, text.data() + text.size(), c);
    units += scrivalen::unitsOf(c);
  }
  return units;
}

bool isNameOfWord(std::string_view name) {
  return !name.empty() && unitsIn(name) <= 40 && !scrivalen::isAsciiDigit(name[0]) && name[0] != '_' &&
         std::all_of(name.begin(), name.end(), [](char c) {
           return scrivalen::isAsciiLetter(c) || scrivalen::isAsciiDigit(c) || c == '_' ||
                  static_cast<unsigned char>(c) >= 0x80;
         });
}

std::string repeated(std::string_view text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) {
    result += text;
  }
  return result;
}

}  // namespace

TEST(BookmarkName, HasUnderscoresForHyphens) {
  EXPECT_EQ(bookmarkName("a"), "a");
  EXPECT_EQ(bookmarkName("prices-per-year-2"), "prices_per_year_2");
  EXPECT_EQ(bookmarkName("\xCF\x84\xCE\xB9\xCE\xBC\xCE\xAE-\xD1\x86\xD0\xB5\xD0\xBD\xD0\xB0"),
            "\xCF\x84\xCE\xB9\xCE\xBC\xCE\xAE_\xD1\x86\xD0\xB5\xD0\xBD\xD0\xB0");
}

TEST(BookmarkName, KeepsWhatIsReadableOfOtherIds) {
  EXPECT_EQ(bookmarkName("Prices").substr(0, 8), "prices__");
  EXPECT_EQ(bookmarkName("2026-results").substr(0, 17), "at_2026_results__");
  EXPECT_EQ(bookmarkName("a place & more").substr(0, 14), "a_place_more__");
  EXPECT_EQ(bookmarkName("%").substr(0, 4), "at__");
}

// LibreOffice leaves the number of the page empty for these.
TEST(BookmarkName, IsNoneOfWhatLibreOfficeNumbers) {
  for (const std::string_view id : {"drawing", "figure", "illustration", "table", "text"}) {
    EXPECT_EQ(bookmarkName(id).substr(0, id.size() + 2), std::string(id) + "__");
  }
  EXPECT_EQ(bookmarkName("tables"), "tables");
  EXPECT_EQ(bookmarkName("text-2"), "text_2");
}

TEST(BookmarkName, DiffersWhereOnlyTheCaseOfIdsDoes) {
  const std::vector<std::string> ids{"abc",
                                     "Abc",
                                     "ABC",
                                     "aBc",
                                     "\xCF\x84\xCE\xB9\xCE\xBC\xCE\xAE",  // Greek, in lower case
                                     "\xCE\xA4\xCE\xB9\xCE\xBC\xCE\xAE",  // with a capital
                                     "\xCE\xA4\xCE\x99\xCE\x9C\xCE\x89",  // in upper case
                                     "\xD1\x86\xD0\xB5\xD0\xBD\xD0\xB0",  // Cyrillic
                                     "\xD0\xA6\xD0\xB5\xD0\xBD\xD0\xB0",
                                     "\xD0\xA6\xD0\x95\xD0\x9D\xD0\x90"};
  EXPECT_EQ(foldedNamesOf(ids).size(), ids.size());
}

TEST(BookmarkName, DiffersWhereOnlySignsOfIdsDo) {
  const std::vector<std::string> ids{"a-b", "a_b",  "a--b", "a__b", "a b", "a.b",
                                     "ab",  "-a-b", "_a_b", "1",    "-1",  "at-1"};
  EXPECT_EQ(foldedNamesOf(ids).size(), ids.size());
}

TEST(BookmarkName, DiffersForLongIdsThatBeginAlike) {
  const std::string start(40, 'a');
  const std::vector<std::string> ids{start, start + 'a', start + 'b', start + start};
  EXPECT_EQ(bookmarkName(start), start);
  EXPECT_EQ(foldedNamesOf(ids).size(), ids.size());
}

TEST(BookmarkName, IsOneThatWordTakes) {
  for (const std::string& id :
       {std::string("1st"), std::string("_hidden"), std::string("-"), std::string("a\xC2\xA0"),
        std::string("a:b/c?\"d\""), std::string("A") + std::string(100, 'b'), repeated("\xF0\xA0\x80\x80", 30),
        repeated("\xD0\x91", 41), repeated("\xF0\x9F\x98\x80-", 20), std::string()}) {
    EXPECT_TRUE(isNameOfWord(bookmarkName(id))) << id << ": " << bookmarkName(id);
  }
}

TEST(BookmarkName, IsTheSameForTheSameId) {
  EXPECT_EQ(bookmarkName("Prices"), bookmarkName("Prices"));
  EXPECT_EQ(bookmarkName("Prices"), "prices__77710F2EA8D080DB");
}
