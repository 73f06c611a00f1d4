#include "document/word/document_font.h"

#include "text/ascii.h"
#include "text/utf.h"

#include <cstddef>
#include <string>

namespace scrivalen::document {
namespace {

using Kind = DocumentFont::Kind;

struct FontOfKind {
  std::string_view setting;
  DocumentFont font;
};

constexpr FontOfKind kFontsOfKinds[] = {
    {"serif", {Kind::Serif, "Times New Roman"}}, {"", {Kind::Sans, "Arial"}},
    {"sans", {Kind::Sans, "Arial"}},             {"sans-serif", {Kind::Sans, "Arial"}},
    {"mono", {Kind::Mono, "Courier New"}},       {"monospace", {Kind::Mono, "Courier New"}}};

}  // namespace

DocumentFont DocumentFont::of(std::string_view setting, OutputWarnings& warnings) {
  constexpr std::size_t kLongest = 31;  // UTF-16 code units, as in Windows
  const std::string kind = asciiLowered(setting);
  for (const FontOfKind& known : kFontsOfKinds) {
    if (known.setting == kind) {
      return known.font;
    }
  }
  const std::string_view kept = cutToUnits(setting, kLongest);
  if (kept.size() < setting.size()) {
    warnings.add(WarningCode::TextCut, "the name of a font cut at 31 characters");
  }
  return {Kind::Own, kept};
}

}  // namespace scrivalen::document
