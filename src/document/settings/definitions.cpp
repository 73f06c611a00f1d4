#include "document/settings/definitions.h"

#include "document/model/values.h"
#include "document/settings/page.h"
#include "text/ascii.h"
#include "text/calendar.h"
#include "text/utf.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>

namespace scrivalen::document {
namespace {

constexpr std::string_view kFormats[] = {"text", "html", "xml", "rtf", "chm", "pdf", "xlsx", "docx", "markdown"};

enum : unsigned {
  kForText = 1 << 0,
  kForHtml = 1 << 1,
  kForXml = 1 << 2,
  kForRtf = 1 << 3,
  kForChm = 1 << 4,
  kForPdf = 1 << 5,
  kForXlsx = 1 << 6,
  kForDocx = 1 << 7,
  kForMarkdown = 1 << 8,
  kForEvery = (1 << 9) - 1,
  kForProperties = kForEvery & ~(kForText | kForMarkdown),
  kForPages = kForHtml | kForRtf | kForPdf | kForXlsx | kForDocx
};

bool takeLine(std::string& value) {
  std::string line;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const auto c = static_cast<unsigned char>(value[i]);
    if (c == '\r' && value.substr(i + 1, 1) == "\n") {
      continue;
    }
    if (c == '\n' || c == '\r' || c == '\t') {
      line += ' ';
    } else if (c < 0x20) {
      char replacement[4];
      line.append(replacement, putUtf8(kReplacement, replacement));
    } else {
      line += value[i];
    }
  }
  value = std::move(line);
  return true;
}

bool takeName(std::string& value) { return takeLine(value) && value.find_first_not_of(' ') != std::string::npos; }

// It stands between the cells of a line, so it is on one line; a tab is as good as any text.
bool takeSeparator(std::string& value) {
  return std::none_of(value.begin(), value.end(),
                      [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t'; });
}

bool takePath(std::string&) { return true; }

bool takePresentPath(std::string& value) { return !value.empty(); }

bool takeOneOf(std::string& value, std::initializer_list<std::string_view> allowed) {
  value = asciiLowered(std::string_view(value));
  return std::find(allowed.begin(), allowed.end(), value) != allowed.end();
}

bool takeFlag(std::string& value) {
  if (!takeOneOf(value, {"yes", "no", "true", "false", "1", "0"})) {
    return false;
  }
  value = value == "yes" || value == "true" || value == "1" ? "yes" : "no";
  return true;
}

bool takeEncoding(std::string& value) { return takeOneOf(value, {"utf-8", "utf-16", "latin-1"}); }
bool takeWidths(std::string& value) { return takeOneOf(value, {"content", "equal"}); }
bool takeStandard(std::string& value) { return takeOneOf(value, {"none", "a-1b", "a-2u"}); }

template <typename Number>
std::optional<Number> integerOf(std::string_view text) {
  Number number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc() && result.ptr == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

bool takeWidth(std::string& value) {
  const auto width = integerOf<int>(value);
  if (!width || *width < 20 || *width > 10000) {
    return false;
  }
  value = std::to_string(*width);
  return true;
}

bool takeLanguage(std::string& value) {
  constexpr std::size_t kLongestSubtag = 8;
  std::size_t size = 0;
  for (const char c : value) {
    if (c == '-' ? size == 0 : !isAsciiLetter(c) && !isAsciiDigit(c)) {
      return false;
    }
    size = c == '-' ? 0 : size + 1;
    if (size > kLongestSubtag) {
      return false;
    }
  }
  return size > 0 && isAsciiLetter(value.front());
}

bool takeClock(std::string& value) {
  constexpr std::int64_t kFirst = daysOf({1, 1, 1}) * kSecondsPerDay;
  constexpr std::int64_t kEnd = daysOf({10000, 1, 1}) * kSecondsPerDay;
  auto seconds = secondsOfIsoTime(value);
  if (!seconds) {
    seconds = integerOf<std::int64_t>(value);
  }
  if (!seconds || *seconds < kFirst || *seconds >= kEnd) {
    return false;
  }
  value = std::to_string(*seconds);
  return true;
}

bool takePaper(std::string& value) {
  const auto paper = paperOf(value);
  if (!paper) {
    return false;
  }
  value = paper->name.empty() ? asciiLowered(std::string_view(value)) : std::string(paper->name);
  return true;
}

bool takeMargins(std::string& value) { return marginsOf(value).has_value(); }
bool takeNumbers(std::string& value) { return NumberStyle::of(value).has_value(); }
bool takeDates(std::string& value) { return DateStyle::of(value).has_value(); }

// The values in tables are turned into texts once for all formats, which is why only a spreadsheet, which shows values
// itself, may have "numbers" and "dates" of its own.
constexpr std::string_view kLine = "a text, shown in one line";
constexpr std::string_view kFlag = "yes or no";

constexpr SettingDefinition kDefinitions[] = {
    {"title", kForEvery, "", kLine, &takeLine},
    {"show-title", kForEvery, "yes", kFlag, &takeFlag},
    {"author", kForProperties, "", kLine, &takeLine},
    {"subject", kForProperties, "", kLine, &takeLine},
    {"keywords", kForProperties, "", kLine, &takeLine},
    {"language", kForProperties, "en", "a language tag (BCP 47): letters, digits and hyphens, such as en-GB",
     &takeLanguage},
    {"date", kForEvery, "", kLine, &takeLine},
    {"clock", kForProperties, "", "seconds since 1970, or a time such as 2026-01-31 23:59:59, in the years 1 to 9999",
     &takeClock},
    {"paper", kForPages, "A4",
     "A3, A4, A5, Letter, Legal, or width and height in millimetres, 50 to 1200 each, such as 210x297", &takePaper},
    {"margins", kForPages, "20mm",
     "one length or four (top, right, bottom, left), each in mm, cm, in or pt and at most 200mm, such as 20mm or 0.8in",
     &takeMargins},
    {"landscape", kForPages, "no", kFlag, &takeFlag},
    {"header", kForPages, "", kLine, &takeLine},
    {"footer", kForPages, "", kLine, &takeLine},
    {"header-image", kForPages, "", "the path of a PNG or JPEG file", &takePath},
    {"font", kForPages | kForChm, "", "the name of a font", &takeName},
    {"font-file", kForPdf, "", "the path of a font file", &takePresentPath, true},
    {"template", kForHtml | kForChm, "", "the path of a template", &takePath},
    {"reference", kForDocx, "", "the path of a Word document or template", &takePath},
    {"styles", kForXlsx, "", "the path of a style sheet", &takePath},
    {kProperty, kForProperties, "", kLine, &takeLine},
    {"encoding", kForText, "utf-8", "utf-8, utf-16 or latin-1", &takeEncoding},
    {"widths", kForText | kForRtf | kForPdf | kForXlsx | kForDocx, "content", "content or equal", &takeWidths},
    {"width", kForText, "80", "a whole number from 20 to 10000", &takeWidth},
    {"separator", kForText, "", "a text without line breaks, such as a tab or ;", &takeSeparator},
    {"numbers", kForXlsx, "1234.5", "1234.5, 1,234.5, 1.234,5 or 1 234,5", &takeNumbers},
    {"dates", kForXlsx, "yyyy-mm-dd", "yyyy, mm (or m) and dd (or d) in any order, with separators, such as dd.mm.yyyy",
     &takeDates},
    {"standard", kForPdf, "none", "none, a-1b or a-2u", &takeStandard},
    {"tagged", kForPdf, "no", kFlag, &takeFlag},
};

}  // namespace

bool SettingDefinition::keepsTabs() const { return take == &takeSeparator; }
bool SettingDefinition::isPath() const { return take == &takePath || take == &takePresentPath; }

std::span<const SettingDefinition> settingDefinitions() { return kDefinitions; }

const SettingDefinition* settingDefinition(std::string_view name) {
  if (name.size() > kProperty.size() && name.starts_with(kProperty)) {
    name = kProperty;
  } else if (name == kProperty) {
    return nullptr;
  }
  const auto* const found = std::find_if(std::begin(kDefinitions), std::end(kDefinitions),
                                         [name](const SettingDefinition& d) { return d.name == name; });
  return found == std::end(kDefinitions) ? nullptr : found;
}

unsigned formatBit(std::string_view format) {
  const auto* const found = std::find(std::begin(kFormats), std::end(kFormats), format);
  return found == std::end(kFormats) ? 0 : 1u << (found - std::begin(kFormats));
}

std::string formatNames(unsigned formats) {
  if (formats == kForEvery) {
    return "every format";
  }
  std::string names;
  for (const std::string_view format : kFormats) {
    const unsigned bit = formatBit(format);
    if ((formats & bit) == 0) {
      continue;
    }
    formats &= ~bit;
    names += names.empty() ? "" : formats == 0 ? " and " : ", ";
    names += format;
  }
  return names;
}

}  // namespace scrivalen::document
