#include "formats/pdf/typeset/fonts/font_set.h"

#include "document/model/writer.h"
#include "formats/pdf/typeset/file/syntax.h"
#include "output/host_handlers.h"
#include "system/files/files.h"
#include "text/ascii.h"
#include "text/utf.h"

namespace scrivalen::typeset {
namespace {

constexpr std::array<const char*, FontSet::kFonts> kFiles = {"LiberationSerif-Regular.ttf",
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

std::string contentsOf(const std::wstring& path) {
  const File file = openForReading(path);
  std::string contents;
  const bool isRead = file && readRest(file, [&contents](std::string_view part) {
                        contents.append(part);
                        return true;
                      });
  return isRead ? contents : std::string();
}

}  // namespace

std::optional<Family> familyOf(std::string_view name) {
  const std::string lowered = asciiLowered(name);
  for (const FamilyName& known : kFamilies) {
    if (known.name == lowered) {
      return known.family;
    }
  }
  return std::nullopt;
}

Typeface& FontSet::load(FontId font) {
  std::wstring path(folderOf(homePath()));
  path.append(L"fonts").append(1, kPathSeparator).append(toWide(kFiles[font]));
  std::string reason;
  auto file = FontFile::read(contentsOf(path), 0, reason);
  if (!file) {
    throw document::OutputFailure(document::Status::FileError, "the font " + toUtf8(path) + " " + reason);
  }
  fonts_[font] = std::make_unique<Typeface>(std::move(file));
  if (hidesMissingGlyphs_) {
    fonts_[font]->replaceMissingGlyph();
  }
  return *fonts_[font];
}

FontId FontSet::fontFor(FontId font, char32_t c, bool& found) {
  found = true;
  if (!at(font).characterOf(c).isMissing) {
    return font;
  }
  constexpr unsigned kStyle = 3;  // bold, italic
  const auto other = static_cast<FontId>(static_cast<unsigned>(Family::DejaVu) * (kStyle + 1) | (font & kStyle));
  found = !at(other).characterOf(c).isMissing;
  return found ? other : font;
}

void FontSet::write(PdfFile& file, std::string& resources) {
  resources += "<<";
  for (std::size_t font = 0; font < kFonts; ++font) {
    if (fonts_[font]) {
      fonts_[font]->write(file, static_cast<int>(font), resources);
    }
  }
  resources += ">>";
}

}  // namespace scrivalen::typeset
