#include "text/languages/windows_language.h"

#include <gtest/gtest.h>

namespace scrivalen {
namespace {

int identifierOf(std::string_view tag) {
  const WindowsLanguage* const language = windowsLanguageOf(tag);
  return language ? language->identifier : 0;
}

}  // namespace

TEST(WindowsLanguage, IsThatOfTheTagInAnyCase) {
  EXPECT_EQ(identifierOf("de"), 0x407);
  EXPECT_EQ(identifierOf("pt-BR"), 0x416);
  EXPECT_EQ(identifierOf("AF"), 0x436);
  EXPECT_EQ(identifierOf("zh-tw"), 0x404);
}

TEST(WindowsLanguage, IsKnownByTheFirstSubtags) {
  EXPECT_EQ(identifierOf("de-AT-1996-x-private"), 0xC07);
  EXPECT_EQ(identifierOf("pl-UA"), 0x415);
  EXPECT_EQ(identifierOf("zh-Hant-TW"), 0x404);
}

TEST(WindowsLanguage, OfSerbiaHasTheIdentifierOfToday) {
  EXPECT_EQ(identifierOf("sr"), 0x281A);
  EXPECT_EQ(identifierOf("sr-Cyrl-RS"), 0x281A);
  EXPECT_EQ(identifierOf("sr-Latn-RS"), 0x241A);
}

TEST(WindowsLanguage, HasACodePageAndAName) {
  EXPECT_EQ(windowsLanguageOf("ru")->codePage, 1251);
  EXPECT_EQ(windowsLanguageOf("ru")->name, "Russian");
  EXPECT_EQ(windowsLanguageOf("mt")->codePage, 1252);
}

TEST(WindowsLanguage, MayBeUnknown) {
  EXPECT_EQ(windowsLanguageOf("tlh"), nullptr);
  EXPECT_EQ(windowsLanguageOf("d"), nullptr);
  EXPECT_EQ(windowsLanguageOf(""), nullptr);
  EXPECT_EQ(windowsLanguageOf("-de"), nullptr);
}

}  // namespace scrivalen
