#include "formats/pdf/typeset/fonts/font_set.h"

#include "document/model/writer.h"
#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/fonts/font_contents.h"
#include "output/host_handlers.h"
#include "system/files/files.h"
#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <map>
#include <new>
#include <utility>

namespace scrivalen::typeset {
namespace {

constexpr const char* kFiles[] = {"LiberationSerif-Regular.ttf",
                                  "LiberationSerif-Italic.ttf",
                                  "LiberationSerif-Bold.ttf",
                                  "LiberationSerif-BoldItalic.ttf",
                                  "LiberationSans-Regular.ttf",
                                  "LiberationSans-Italic.ttf",
                                  "LiberationSans-Bold.ttf",
                                  "LiberationSans-BoldItalic.ttf",
                                  "LiberationMono-Regular.ttf",
                                  "LiberationMono-Italic.ttf",
                                  "LiberationMono-Bold.ttf",
                                  "LiberationMono-BoldItalic.ttf",
                                  "DejaVuSans.ttf",
                                  "DejaVuSans-Oblique.ttf",
                                  "DejaVuSans-Bold.ttf",
                                  "DejaVuSans-BoldOblique.ttf"};

struct FamilyName {
  std::string_view name;  // in lower case
  Family family;
};

constexpr FamilyName kFamilies[] = {{"liberation serif", Family::Serif},
                                    {"times new roman", Family::Serif},
                                    {"times", Family::Serif},
                                    {"serif", Family::Serif},
                                    {"liberation sans", Family::Sans},
                                    {"arial", Family::Sans},
                                    {"helvetica", Family::Sans},
                                    {"sans-serif", Family::Sans},
                                    {"sans", Family::Sans},
                                    {"liberation mono", Family::Mono},
                                    {"courier new", Family::Mono},
                                    {"courier", Family::Mono},
                                    {"monospace", Family::Mono},
                                    {"mono", Family::Mono},
                                    {"dejavu sans", Family::DejaVu}};

constexpr unsigned kStyles = 4;

constexpr FontId kDejaVu = fontOf(Family::DejaVu, false, false);
constexpr FontId kHostFonts = kDejaVu + kStyles;

// The missing glyphs of other fonts may have nothing to see; Liberation Serif's and Liberation Sans Italic's have not.
constexpr bool showsMissingGlyph(FontId font) {
  return font == fontOf(Family::Sans, false, false) || font == fontOf(Family::Sans, true, false) ||
         (font >= fontOf(Family::Mono, false, false) && font < kHostFonts);
}

constexpr unsigned styleOf(FontId font) { return font % kStyles; }

}  // namespace

FontSet::FontSet(std::vector<std::unique_ptr<FontFile>> files, bool hidesMissingGlyphs, std::size_t mostCodes)
    : hidesMissingGlyphs_(hidesMissingGlyphs), mostCodes_(mostCodes), fonts_(kHostFonts, nullptr) {
  for (std::unique_ptr<FontFile>& file : files) {
    add(std::move(file));
  }
  // What a family lacks is drawn in the nearest font that it has: of the same slope, then of the same weight.
  for (std::size_t first = kHostFonts; first < fonts_.size(); first += kStyles) {
    Typeface* own[kStyles];
    std::copy_n(fonts_.begin() + static_cast<std::ptrdiff_t>(first), kStyles, own);
    for (unsigned style = 0; style < kStyles; ++style) {
      for (const unsigned other : {0u, 2u, 1u, 3u}) {
        Typeface*& font = fonts_[first + style];
        font = font ? font : own[style ^ other];
      }
    }
  }
}

void FontSet::add(std::unique_ptr<FontFile> file) {
  const FontNames& names = file->names();
  const unsigned style = (names.isBold ? 2 : 0) + (names.isItalic ? 1 : 0);
  std::size_t place = 0;
  while (place < names_.size() &&
         (names_[place].family != names.family || fonts_[kHostFonts + place * kStyles + style] != nullptr)) {
    ++place;
  }
  if (place == names_.size()) {
    names_.push_back(names);
    fonts_.resize(fonts_.size() + kStyles, nullptr);
  }
  typefaces_.push_back(std::make_unique<Typeface>(std::move(file), mostCodes_));
  fonts_[kHostFonts + place * kStyles + style] = typefaces_.back().get();
  if (hidesMissingGlyphs_) {
    typefaces_.back()->replaceMissingGlyph();
  }
}

std::optional<Family> FontSet::familyOf(std::string_view name) const {
  const std::string lowered = asciiLowered(name);
  for (std::size_t i = 0; i < names_.size(); ++i) {
    for (const std::string* own : {&names_[i].family, &names_[i].wholeFamily, &names_[i].full, &names_[i].postScript}) {
      if (!own->empty() && asciiLowered(std::string_view(*own)) == lowered) {
        return static_cast<Family>(kHostFonts / kStyles + i);
      }
    }
  }
  for (const FamilyName& known : kFamilies) {
    if (known.name == lowered) {
      return known.family;
    }
  }
  return std::nullopt;
}

std::string FontSet::familyNames() const {
  std::string list = "'Liberation Serif', 'Liberation Sans', 'Liberation Mono', 'DejaVu Sans'";
  for (const FontNames& names : names_) {
    if (!names.family.empty()) {
      list.append(", '").append(names.family).append("'");
    }
  }
  return list;
}

Typeface& FontSet::load(FontId font) {
  std::wstring path(folderOf(homePath()));
  path.append(L"fonts").append(1, kPathSeparator).append(toWide(kFiles[font]));
  std::string reason;
  std::string contents = readFontFile(path, reason);
  auto file = reason.empty() ? FontFile::read(std::move(contents), 0, reason) : nullptr;
  if (!file) {
    throw document::OutputFailure(document::Status::FileError,
                                  "cannot use the font file '" + toUtf8(path) + "': " + reason);
  }
  // HarfBuzz may once have had no memory for what it keeps for all fonts.
  if (file->glyphOf('A') == 0) {
    throw std::bad_alloc();
  }
  typefaces_.push_back(std::make_unique<Typeface>(std::move(file), mostCodes_));
  fonts_[font] = typefaces_.back().get();
  if (hidesMissingGlyphs_) {
    fonts_[font]->replaceMissingGlyph();
  }
  return *fonts_[font];
}

// Looks in one family for a character, first in the style that is asked for.
bool FontSet::findIn(FontId first, unsigned style, char32_t c, FontId& font) {
  for (const unsigned own : {style, style & 2u, 0u}) {
    const auto candidate = static_cast<FontId>(first + own);
    if (at(candidate).has(c)) {
      font = candidate;
      return true;
    }
  }
  return false;
}

FontId FontSet::fontFor(FontId font, char32_t c, bool& found) {
  found = true;
  if (at(font).has(c)) {
    return font;
  }
  const unsigned style = styleOf(font);
  FontId other = font;
  for (std::size_t first = kHostFonts; first < fonts_.size(); first += kStyles) {
    if (findIn(static_cast<FontId>(first), style, c, other)) {
      return other;
    }
  }
  found = findIn(kDejaVu, style, c, other);
  return found || showsMissingGlyph(font) ? other : kDejaVu;
}

void FontSet::write(PdfFile& file, std::string& resources) const {
  std::map<const Typeface*, WrittenFonts> written;
  for (const auto& typeface : typefaces_) {
    written[typeface.get()] = typeface->write(file);
  }
  const auto add = [&resources](std::string_view kind, std::size_t font, std::size_t further, int number) {
    resources += kind;
    appendInteger(resources, static_cast<std::int64_t>(font));
    if (further > 0) {
      resources += '.';
      appendInteger(resources, static_cast<std::int64_t>(further));
    }
    resources += ' ';
    appendReference(resources, number);
  };
  resources += "<<";
  for (std::size_t font = 0; font < fonts_.size(); ++font) {
    const auto found = written.find(fonts_[font]);
    if (found == written.end()) {
      continue;
    }
    if (found->second.simple != 0) {
      add("/F", font, 0, found->second.simple);
    }
    for (std::size_t i = 0; i < found->second.composites.size(); ++i) {
      add("/G", font, i, found->second.composites[i]);
    }
  }
  resources += ">>";
}

}  // namespace scrivalen::typeset
