#include "text/colors.h"

#include <gtest/gtest.h>

using scrivalen::colorOf;
using scrivalen::Rgb;

TEST(Colors, HaveTheNamesOfCss) {
  EXPECT_EQ(colorOf(L"black"), Rgb{0x000000});
  EXPECT_EQ(colorOf(L"white"), Rgb{0xFFFFFF});
  EXPECT_EQ(colorOf(L"red"), Rgb{0xFF0000});
  EXPECT_EQ(colorOf(L"lightgreen"), Rgb{0x90EE90});
  EXPECT_EQ(colorOf(L"lightgrey"), Rgb{0xD3D3D3});
  EXPECT_EQ(colorOf(L"aliceblue"), Rgb{0xF0F8FF});
  EXPECT_EQ(colorOf(L"yellowgreen"), Rgb{0x9ACD32});
}

TEST(Colors, HaveTheNamesOfTheOtherFormats) {
  for (const wchar_t* name :
       {L"black", L"blue", L"cyan", L"lightgreen", L"magenta", L"red", L"yellow", L"white", L"darkblue", L"darkcyan",
        L"green", L"darkmagenta", L"darkred", L"darkyellow", L"gray", L"lightgray", L"darkgrey", L"lightgrey"}) {
    EXPECT_TRUE(colorOf(name).has_value()) << name;
  }
  EXPECT_EQ(colorOf(L"darkyellow"), Rgb{0x808000});
}

TEST(Colors, IgnoreTheCaseOfTheirNames) {
  EXPECT_EQ(colorOf(L"DarkOrange"), Rgb{0xFF8C00});
  EXPECT_EQ(colorOf(L"NAVY"), Rgb{0x000080});
}

TEST(Colors, MayBeSixHexadecimalDigits) {
  EXPECT_EQ(colorOf(L"#12aBeF"), Rgb{0x12ABEF});
  EXPECT_EQ(colorOf(L"#000000"), Rgb{0});
}

TEST(Colors, RejectAllOtherTexts) {
  for (const wchar_t* text : {L"", L"#", L"#12345", L"#1234567", L"#12345G", L"#-12345", L"123456", L"re", L"redd",
                              L" red", L"r\u00E9d", L"zzz", L"a"}) {
    EXPECT_EQ(colorOf(text), std::nullopt) << text;
  }
}
