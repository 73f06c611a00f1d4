#include "system/messages.h"

#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>
#include <libintl.h>

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

using namespace scrivalen::test;

namespace {

constexpr const char* kLocale = "scrivalen_translated";

void putNumber(std::string& bytes, unsigned value) {
  for (int shift = 0; shift < 32; shift += 8) {
    bytes += static_cast<char>(value >> shift & 0xFF);
  }
}

// A locale's LC_MESSAGES file as the GNU C library reads it: a magic number, the number of values, the offset of each.
// The values are the patterns and words for yes and no, and the character set.
std::string yesAndNo() {
  constexpr unsigned kMark = 0x20031110;
  constexpr unsigned kValues = 5;
  std::string bytes;
  putNumber(bytes, kMark);
  putNumber(bytes, kValues);
  for (unsigned value = 0; value < kValues; ++value) {
    putNumber(bytes, 4 * (2 + kValues) + 2 * value);
  }
  return bytes.append("y\0n\0y\0n\0UTF-8\0", 14);
}

// A catalogue of gettext with one translation.
std::string catalogue(std::string_view text, std::string_view translation) {
  constexpr unsigned kMark = 0x950412DE;
  constexpr unsigned kTexts = 28;
  constexpr unsigned kTranslations = kTexts + 8;
  constexpr unsigned kEnd = kTranslations + 8;
  std::string bytes;
  for (const unsigned number : {kMark, 0u, 1u, kTexts, kTranslations, 0u, kEnd}) {
    putNumber(bytes, number);
  }
  putNumber(bytes, static_cast<unsigned>(text.size()));
  putNumber(bytes, kEnd);
  putNumber(bytes, static_cast<unsigned>(translation.size()));
  putNumber(bytes, kEnd + static_cast<unsigned>(text.size()) + 1);
  return bytes.append(text).append(1, '\0').append(translation).append(1, '\0');
}

// For its lifetime the C library translates one of its error texts.
class TranslatedErrors {
 public:
  TranslatedErrors(const char* text, const char* translation)
      : catalogues_(::bindtextdomain("libc", nullptr)), locale_(std::setlocale(LC_MESSAGES, nullptr)) {
    write("SYS_LC_MESSAGES", yesAndNo());
    write("libc.mo", catalogue(text, translation));
    const std::string path = scrivalen::narrowPath(folder_.path());
    ::setenv("LOCPATH", path.c_str(), 1);
    isSet_ = std::setlocale(LC_MESSAGES, kLocale) != nullptr;
    ::unsetenv("LOCPATH");
    ::bindtextdomain("libc", path.c_str());
  }
  TranslatedErrors(const TranslatedErrors&) = delete;
  TranslatedErrors& operator=(const TranslatedErrors&) = delete;
  ~TranslatedErrors() {
    ::bindtextdomain("libc", catalogues_.c_str());
    std::setlocale(LC_MESSAGES, locale_.c_str());
  }

  bool isSet() const { return isSet_; }

 private:
  void write(const char* name, const std::string& bytes) const {
    const auto messages = asPath(folder_.path()) / kLocale / "LC_MESSAGES";
    std::filesystem::create_directories(messages);
    writeBytes((messages / name).wstring(), bytes);
  }

  const TemporaryFolder folder_;
  std::string catalogues_;
  std::string locale_;
  bool isSet_ = false;
};

}  // namespace

TEST(SystemMessages, DoNotFollowTheLocale) {
  const TranslatedErrors translated("No space left on device", "Kein Platz");
  ASSERT_TRUE(translated.isSet());
  ASSERT_STREQ(std::strerror(ENOSPC), "Kein Platz");
  EXPECT_EQ(scrivalen::systemErrorText(ENOSPC), L"No space left on device");
}

TEST(SystemMessages, GiveTheNumberOfAnUnknownError) {
  EXPECT_EQ(scrivalen::systemErrorText(123456), L"Unknown error 123456");
}
