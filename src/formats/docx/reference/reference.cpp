#include "formats/docx/reference/reference.h"

#include "document/model/writer.h"
#include "formats/docx/reference/other_parts.h"
#include "formats/docx/reference/package_reader.h"
#include "formats/docx/reference/schema.h"
#include "formats/docx/reference/style_merge.h"
#include "formats/docx/reference/xml_reader.h"
#include "formats/docx/text/run_style.h"
#include "formats/docx/xml.h"
#include "output/archive/zip_reader.h"
#include "report/template_path.h"
#include "system/files/files.h"
#include "system/files/whole_file.h"
#include "system/messages.h"
#include "text/utf.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <new>
#include <set>
#include <utility>

namespace scrivalen::document::docx {
namespace {

// Texts of the file are in messages: they are cleaned, and not too long.
std::string shownText(std::string_view text) {
  constexpr std::size_t kLongest = 300;  // UTF-16 code units
  std::string clean = toUtf8(toWide(text));
  std::replace_if(
      clean.begin(), clean.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  const std::string_view kept = cutToUnits(clean, kLongest);
  return kept.size() == clean.size() ? clean : joined({kept, "..."});
}

[[noreturn]] void failToUse(std::string_view setting, std::string_view verb, std::string_view reason) {
  throw OutputFailure(Status::TemplateNotFound,
                      joined({"The reference '", toUtf8(widePath(setting)), "' cannot be ", verb, shownText(reason)}));
}

std::string readFile(std::string_view setting) {
  WholeFile file = readWholeFile(templateFile(setting), Reference::kMostBytes);
  switch (file.problem) {
    case WholeFile::Problem::None: break;
    case WholeFile::Problem::SpecialFile: failToUse(setting, "used: ", "the file is a device or a pipe.");
    case WholeFile::Problem::TooLarge: failToUse(setting, "used: ", "the file is larger than 16 MiB.");
    case WholeFile::Problem::System:
      if (isOutOfMemoryError(file.error)) {
        throw std::bad_alloc();
      }
      failToUse(setting, "read. ", toUtf8(systemErrorText(file.error)));
  }
  return std::move(file.bytes);
}

// The language is that of the document.
void setLanguage(StyleList& styles, std::string_view language) {
  const std::string value(languageValue(language));
  if (value.empty()) {
    return;
  }
  auto& before = styles.before();
  auto defaults = std::find_if(before.begin(), before.end(),
                               [](const XmlElement& element) { return element.name == "w:docDefaults"; });
  if (defaults == before.end()) {
    defaults = before.insert(before.begin(), XmlElement{"w:docDefaults"});
  }
  XmlElement& run = childInOrder(childInOrder(*defaults, "w:rPrDefault"), "w:rPr");
  childInOrder(run, "w:lang").attributes = {{"w:val", value}, {"w:eastAsia", value}, {"w:bidi", value}};
}

// Documents without a reference need no default style of numbering.
XmlElement defaultNumbering() {
  return {"w:style",
          {{"w:type", "numbering"}, {"w:default", "1"}, {"w:styleId", "NoList"}},
          {{"w:name", {{"w:val", "No List"}}},
           {"w:uiPriority", {{"w:val", "99"}}},
           {"w:semiHidden"},
           {"w:unhideWhenUsed"}}};
}

// Each style of the reference once.
void warnOfMissedNumbers(const std::vector<MissedNumber>& missed, const std::set<std::string>& unnumberedIds,
                         OutputWarnings& warnings) {
  std::set<std::string_view> named;
  for (const MissedNumber& one : missed) {
    if (unnumberedIds.contains(one.id) && named.insert(one.source).second) {
      warnings.add(WarningCode::SomethingLeftOut,
                   joined({"the numbering of the style '", shownText(one.source), "' of the reference, left out"}));
    }
  }
}

const XmlElement* firstRowShade(const StyleList& styles, const XmlElement& table) {
  for (const XmlElement* const base : styles.basesOf(table)) {
    for (const XmlElement& part : base->children) {
      const XmlElement* const cell = part.attribute("w:type") == "firstRow" ? part.child("w:tcPr") : nullptr;
      if (const XmlElement* const shade = cell == nullptr ? nullptr : cell->child("w:shd")) {
        return shade;
      }
    }
  }
  return nullptr;
}

}  // namespace

struct Reference::Content {
  StyleList styles;
  std::string theme;
  std::string fonts;

  static Content read(std::string_view setting) {
    const std::string bytes = readFile(setting);
    try {
      LookParts parts = readLookParts(bytes);
      return {StyleList(std::move(parts.styles)), parts.theme ? themePart(std::move(*parts.theme)) : std::string(),
              parts.fonts ? fontsPart(std::move(*parts.fonts)) : std::string()};
    } catch (const ArchiveError& error) {
      failToUse(setting, "used: ", joined({error.what(), "."}));
    }
  }
};

Reference::Reference(std::string_view setting) : Reference(Content::read(setting)) {}

Reference::Reference(Content content)
    : styles_(std::move(content.styles)), theme_(std::move(content.theme)), fonts_(std::move(content.fonts)) {}

// The shade is that of the first row, which the style of the table itself gives to that row alone.
TableLook Reference::tableLook() const {
  TableLook look{joined({"<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"", kHeaderColor, "\"/>"}), false,
                 letterWidth()};
  const XmlElement* const table = matchingStyle(styles_, "table", "Table");
  if (table == nullptr) {
    return look;
  }
  const XmlElement* const shade = firstRowShade(styles_, *table);
  look.headerShade = shade == nullptr ? std::string() : xmlText(*shade);
  look.hasBands = true;
  return look;
}

// Letters of common fonts are up to this much wider than those of Arial.
double Reference::letterWidth() const {
  constexpr double kWidestFont = 1.15;
  constexpr int kMostHalfPoints = 3276;
  int halfPoints = kUsualTableHalfPoints;
  for (const std::string_view name : {"Table Text", "Table Heading"}) {
    const XmlElement* const style = matchingStyle(styles_, "paragraph", name);
    const XmlElement* const size = style == nullptr ? nullptr : styles_.inherited(*style, "w:rPr", "w:sz");
    const std::string_view digits = size == nullptr ? std::string_view() : size->attribute("w:val");
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    halfPoints = std::clamp(value, halfPoints, kMostHalfPoints);
  }
  return kWidestFont * halfPoints / kUsualTableHalfPoints;
}

void Reference::writeStyles(OutputBuffer& out, const StyleSheet& own, std::string_view language,
                            OutputWarnings& warnings) const {
  StyleList ownStyles(readXml(own.text()));
  ownStyles.add(defaultNumbering());
  StyleMerge merge = mergedStyles(styles_, ownStyles);
  warnOfMissedNumbers(merge.missed, own.unnumberedIds(), warnings);
  setLanguage(merge.styles, language);
  put(out, kXmlStart);
  put(out, "<w:styles");
  put(out, kNamespaces);
  put(out, "\n");
  for (const auto* const elements : {&std::as_const(merge.styles).before(), &std::as_const(merge.styles).styles()}) {
    for (const XmlElement& element : *elements) {
      writeXml(out, element);
      put(out, "\n");
    }
  }
  put(out, "</w:styles>\n");
}

std::unique_ptr<const Reference> referenceOf(const FormatSettings& settings) {
  const std::string_view path = settings.text("reference");
  return path.empty() ? nullptr : std::make_unique<const Reference>(path);
}

}  // namespace scrivalen::document::docx
