#include "formats/pdf/typeset/file/color_profile.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

#include <string>

using namespace scrivalen::typeset;
using scrivalen::test::bigEndian;

namespace {

std::uint32_t numberAt(const std::string& bytes, std::size_t at, std::size_t size = 4) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < size; ++i) {
    number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
  }
  return number;
}

// The data of a tag, found by the table after the header.
std::string tagOf(const std::string& profile, const std::string& name) {
  const std::uint32_t count = numberAt(profile, 128);
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::size_t entry = 132 + 12 * i;
    if (profile.substr(entry, 4) == name) {
      return profile.substr(numberAt(profile, entry + 4), numberAt(profile, entry + 8));
    }
  }
  return "";
}

}  // namespace

TEST(SrgbProfile, BeginsWithTheHeaderOfAMonitorInRgb) {
  const std::string profile = srgbProfile();
  EXPECT_EQ(numberAt(profile, 0), profile.size());
  EXPECT_EQ(numberAt(profile, 8), 0x02100000u);
  EXPECT_EQ(profile.substr(12, 12), "mntrRGB XYZ ");
  EXPECT_EQ(profile.substr(36, 4), "acsp");
}

// What the colours add up to is white: the light D50, in 1/65536.
TEST(SrgbProfile, MixesItsPrimariesToWhite) {
  const std::string profile = srgbProfile();
  const std::uint32_t white[] = {63190, 65536, 54061};
  for (std::size_t i = 0; i < 3; ++i) {
    std::uint32_t sum = 0;
    for (const char* name : {"rXYZ", "gXYZ", "bXYZ"}) {
      sum += numberAt(tagOf(profile, name), 8 + 4 * i);
    }
    EXPECT_NEAR(sum, white[i], 3) << i;
    EXPECT_EQ(numberAt(tagOf(profile, "wtpt"), 8 + 4 * i), white[i]);
  }
}

// By IEC 61966-2-1: 10 of 255 is on the line near black, 128 on the curve.
TEST(SrgbProfile, HasTheCurveOfSrgbForEachComponent) {
  const std::string profile = srgbProfile();
  for (const char* name : {"rTRC", "gTRC", "bTRC"}) {
    const std::string curve = tagOf(profile, name);
    ASSERT_EQ(curve.substr(0, 12), "curv" + bigEndian(0, 4) + bigEndian(256, 4));
    EXPECT_EQ(numberAt(curve, 12, 2), 0u);
    EXPECT_EQ(numberAt(curve, 12 + 2 * 10, 2), 199u);
    EXPECT_EQ(numberAt(curve, 12 + 2 * 128, 2), 14146u);
    EXPECT_EQ(numberAt(curve, 12 + 2 * 255, 2), 65535u);
  }
}

TEST(SrgbProfile, SaysWhatItIs) {
  const std::string description = tagOf(srgbProfile(), "desc");
  EXPECT_EQ(description.substr(0, 17), "desc" + bigEndian(0, 4) + bigEndian(5, 4) + "sRGB" + '\0');
  EXPECT_EQ(description.size(), 8 + 4 + 5 + 78u);
  EXPECT_EQ(tagOf(srgbProfile(), "cprt"), "text" + bigEndian(0, 4) + "No copyright" + '\0');
}
