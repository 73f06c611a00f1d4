#include "document/settings/page.h"

#include "document/settings/settings.h"
#include "text/ascii.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>

namespace scrivalen::document {
namespace {

constexpr double kPointsPerMm = 72 / 25.4;
constexpr double kShortestSideMm = 50;
constexpr double kLongestSideMm = 1200;
constexpr double kWidestMarginPt = 200 * kPointsPerMm;
constexpr double kMostOfASide = 2.0 / 3;  // that both margins together take

constexpr Paper kPapers[] = {
    {"A3", 297, 420}, {"A4", 210, 297}, {"A5", 148, 210}, {"Letter", 215.9, 279.4}, {"Legal", 215.9, 355.6}};

struct Unit {
  std::string_view name;
  double points;
};

constexpr Unit kUnits[] = {{"mm", kPointsPerMm}, {"cm", 10 * kPointsPerMm}, {"in", 72}, {"pt", 1}};

// Removes a number without sign or exponent from the beginning of a text.
std::optional<double> takeNumber(std::string_view& text) {
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number, std::chars_format::fixed);
  if (text.empty() || !isAsciiDigit(text.front()) || result.ec != std::errc()) {
    return std::nullopt;
  }
  text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
  return number;
}

std::optional<double> lengthOf(std::string_view text) {
  const auto number = takeNumber(text);
  const auto* unit = std::find_if(std::begin(kUnits), std::end(kUnits), [&](const Unit& u) { return u.name == text; });
  if (!number || unit == std::end(kUnits) || *number * unit->points > kWidestMarginPt) {
    return std::nullopt;
  }
  return *number * unit->points;
}

std::optional<Paper> paperOfSize(std::string_view text) {
  const auto width = takeNumber(text);
  if (!width || !text.starts_with('x')) {
    return std::nullopt;
  }
  text.remove_prefix(1);
  const auto height = takeNumber(text);
  if (!height || !text.empty()) {
    return std::nullopt;
  }
  const auto [shorter, longer] = std::minmax(*width, *height);
  return shorter >= kShortestSideMm && longer <= kLongestSideMm ? std::optional(Paper{{}, *width, *height})
                                                                : std::nullopt;
}

void reduce(double& a, double& b, double side) {
  const double sum = a + b;
  if (sum > side * kMostOfASide) {
    a *= side * kMostOfASide / sum;
    b *= side * kMostOfASide / sum;
  }
}

}  // namespace

std::optional<Paper> paperOf(std::string_view text) {
  const std::string name = asciiLowered(text);
  for (const Paper& paper : kPapers) {
    if (asciiLowered(paper.name) == name) {
      return paper;
    }
  }
  return paperOfSize(name);
}

std::optional<Margins> marginsOf(std::string_view text) {
  constexpr std::size_t kSides = 4;
  double lengths[kSides] = {};
  std::size_t count = 0;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    const auto length = lengthOf(word);
    if (!length || count == kSides) {
      return std::nullopt;
    }
    lengths[count++] = *length;
  }
  if (count == 1) {
    return Margins{lengths[0], lengths[0], lengths[0], lengths[0]};
  }
  return count == kSides ? std::optional(Margins{lengths[0], lengths[1], lengths[2], lengths[3]}) : std::nullopt;
}

Page pageOf(const FormatSettings& settings, double longestSidePt) {
  const Paper paper = *paperOf(settings.text("paper"));
  const Margins margins = *marginsOf(settings.text("margins"));
  double width = std::min(paper.widthMm * kPointsPerMm, longestSidePt);
  double height = std::min(paper.heightMm * kPointsPerMm, longestSidePt);
  if (settings.flag("landscape") && width < height) {
    std::swap(width, height);
  }
  Page page{width, height, margins.topPt, margins.rightPt, margins.bottomPt, margins.leftPt};
  reduce(page.leftPt, page.rightPt, width);
  reduce(page.topPt, page.bottomPt, height);
  return page;
}

}  // namespace scrivalen::document
