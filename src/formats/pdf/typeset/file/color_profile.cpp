#include "formats/pdf/typeset/file/color_profile.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scrivalen::typeset {
namespace {

// Colours in numbers of 16 bits before and 16 after the point.
using Xyz = std::array<std::uint32_t, 3>;

constexpr Xyz kIlluminant{0xF6D6, 0x10000, 0xD32D};  // D50
// The primaries of IEC 61966-2-1, adapted to it.
constexpr Xyz kRed{0x6FA0, 0x38F5, 0x0390};
constexpr Xyz kGreen{0x6297, 0xB787, 0x18D9};
constexpr Xyz kBlue{0x249F, 0x0F84, 0xB6C3};

constexpr std::size_t kProfileHeaderSize = 128;
constexpr std::size_t kTagEntrySize = 12;
constexpr std::size_t kCurvePoints = 256;

void put(std::string& out, std::uint32_t value, unsigned bytes = 4) {
  while (bytes-- > 0) {
    out += static_cast<char>(static_cast<unsigned char>(value >> 8 * bytes));
  }
}

void put(std::string& out, const Xyz& color) {
  for (const std::uint32_t part : color) {
    put(out, part);
  }
}

std::string xyz(const Xyz& color) {
  std::string tag = "XYZ ";
  put(tag, 0);
  put(tag, color);
  return tag;
}

// How bright each step of a component is.
std::string curve() {
  std::string tag = "curv";
  put(tag, 0);
  put(tag, kCurvePoints);
  for (std::size_t i = 0; i < kCurvePoints; ++i) {
    const double value = static_cast<double>(i) / (kCurvePoints - 1);
    const double bright = value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    put(tag, static_cast<std::uint32_t>(std::lround(bright * 0xFFFF)), 2);
  }
  return tag;
}

std::string description(std::string_view name) {
  constexpr std::size_t kOtherNames = 4 + 4 + 2 + 1 + 67;  // in Unicode and for an old system: none
  std::string tag = "desc";
  put(tag, 0);
  put(tag, static_cast<std::uint32_t>(name.size()) + 1);
  tag.append(name).append(1 + kOtherNames, '\0');
  return tag;
}

std::string text(std::string_view words) {
  std::string tag = "text";
  put(tag, 0);
  tag.append(words).append(1, '\0');
  return tag;
}

std::string header(std::size_t size) {
  std::string out;
  put(out, static_cast<std::uint32_t>(size));
  put(out, 0);
  put(out, 0x02100000);  // version 2.1
  out += "mntrRGB XYZ ";
  for (const std::uint32_t part : {2000u, 1u, 1u, 0u, 0u, 0u}) {
    put(out, part, 2);
  }
  out += "acsp";
  out.append(28, '\0');  // no maker, and perceptual intent
  put(out, kIlluminant);
  out.append(kProfileHeaderSize - out.size(), '\0');
  return out;
}

}  // namespace

std::string srgbProfile() {
  struct Tag {
    std::string_view name;
    std::string data;
  };
  const std::string brightness = curve();
  const Tag tags[] = {{"desc", description("sRGB")},
                      {"cprt", text("No copyright")},
                      {"wtpt", xyz(kIlluminant)},
                      {"rXYZ", xyz(kRed)},
                      {"gXYZ", xyz(kGreen)},
                      {"bXYZ", xyz(kBlue)},
                      {"rTRC", brightness},
                      {"gTRC", {}},
                      {"bTRC", {}}};
  std::string table;
  std::string data;
  put(table, static_cast<std::uint32_t>(std::size(tags)));
  const std::size_t begin = kProfileHeaderSize + 4 + std::size(tags) * kTagEntrySize;
  std::size_t at = 0;
  std::size_t size = 0;
  for (const Tag& tag : tags) {
    // The three curves are one.
    if (!tag.data.empty()) {
      at = begin + data.size();
      size = tag.data.size();
      data += tag.data;
      data.append((4 - data.size() % 4) % 4, '\0');
    }
    table += tag.name;
    put(table, static_cast<std::uint32_t>(at));
    put(table, static_cast<std::uint32_t>(size));
  }
  return header(begin + data.size()) + table + data;
}

int writeOutputIntent(PdfFile& file) {
  const int profile = file.newNumber();
  file.writeStream(profile, "/N 3", srgbProfile());
  std::string object = "<</Type/OutputIntent/S/GTS_PDFA1/OutputConditionIdentifier(sRGB)/Info(sRGB)/DestOutputProfile ";
  appendReference(object, profile);
  object += ">>";
  const int number = file.newNumber();
  file.writeObject(number, object);
  return number;
}

}  // namespace scrivalen::typeset
