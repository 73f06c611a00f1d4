#include "text/ascii.h"

#include "text/address.h"
#include "text/replaced_all.h"
#include "text/xml_characters.h"

#include <gtest/gtest.h>

#include <string>

using namespace scrivalen;

TEST(AsciiCase, ChangesOnlyTheLettersAToZ) {
  EXPECT_EQ(asciiLower('A'), 'a');
  EXPECT_EQ(asciiLower(L'Z'), L'z');
  EXPECT_EQ(asciiUpper('z'), 'Z');
  for (const wchar_t c : {L'@', L'[', L'`', L'{', L'1', L'\u00C4', L'\u00E4'}) {
    EXPECT_EQ(asciiLower(c), c);
    EXPECT_EQ(asciiUpper(c), c);
  }
  EXPECT_EQ(asciiLowered<char>("PDF \xC3\x84"), "pdf \xC3\x84");
}

TEST(AsciiLetter, IsOnlyAToZInEitherCase) {
  for (const char c : {'a', 'z', 'A', 'Z'}) {
    EXPECT_TRUE(isAsciiLetter(c)) << c;
  }
  for (const wchar_t c : {L'0', L'@', L'[', L'`', L'{', L'\u00E4'}) {
    EXPECT_FALSE(isAsciiLetter(c));
  }
}

TEST(HexValue, AcceptsBothCases) {
  for (int value = 0; value < 16; ++value) {
    EXPECT_EQ(hexValue(kHexDigits[static_cast<std::size_t>(value)]), value);
    EXPECT_EQ(hexValue(asciiLower(kHexDigits[static_cast<std::size_t>(value)])), value);
  }
}

TEST(HexValue, IsNegativeForOtherCharacters) {
  for (const wchar_t c : {L'/', L':', L'@', L'G', L'`', L'g', L'\0', L'\uFF11'}) {
    EXPECT_EQ(hexValue(c), -1);
  }
}

TEST(HasScheme, ChecksTheTextBeforeTheColon) {
  for (const wchar_t* const address : {L"http://a", L"mailto:a", L"x-1+2.3:", L"HTTP:"}) {
    EXPECT_TRUE(hasScheme(address)) << address;
  }
  for (const wchar_t* const address : {L"", L"a", L":", L"c:\\a", L"1a:b", L"a b:c", L"#a:b", L"a/b:c"}) {
    EXPECT_FALSE(hasScheme(address)) << address;
  }
}

TEST(AsciiAddress, EncodesCharactersThatUrlsForbid) {
  EXPECT_EQ(asciiAddress(L"https://[::1]:8080/~a/b;c,d?e=f&g=%20+!$'()*@_#h"),
            "https://[::1]:8080/~a/b;c,d?e=f&g=%20+!$'()*@_#h");
  EXPECT_EQ(asciiAddress(L" \"<>\\^`{|}\x7F\n\x1F"), "%20%22%3C%3E%5C%5E%60%7B%7C%7D%7F%0A%1F");
  EXPECT_EQ(asciiAddress(L"\u00E9\u4E2D"), "%C3%A9%E4%B8%AD");
  EXPECT_EQ(asciiAddress(L""), "");
}

TEST(ReplacedAll, GoesFromLeftToRight) {
  EXPECT_EQ(replacedAll<char>("aaa", "aa", "b"), "ba");
  EXPECT_EQ(replacedAll<wchar_t>(L"a%b%", L"%", L"%%"), L"a%%b%%");
  EXPECT_EQ(replacedAll<char>("abc", "", "x"), "abc");
}

TEST(IsXmlCharacter, FollowsTheStandard) {
  for (const char32_t c : {U'\t', U'\n', U'\r', U' ', U'\x7F', U'\xD7FF', U'\xE000', U'\xFFFD', U'\x10FFFF'}) {
    EXPECT_TRUE(isXmlCharacter(c)) << static_cast<unsigned>(c);
  }
  for (const char32_t c : {char32_t{0}, char32_t{0x1F}, char32_t{0xD800}, char32_t{0xDFFF}, char32_t{0xFFFE},
                           char32_t{0xFFFF}, char32_t{0x110000}}) {
    EXPECT_FALSE(isXmlCharacter(c)) << static_cast<unsigned>(c);
  }
}
