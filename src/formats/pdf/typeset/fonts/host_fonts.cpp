#include "formats/pdf/typeset/fonts/host_fonts.h"

#include "document/clean_text.h"
#include "document/model/writer.h"
#include "formats/pdf/typeset/fonts/font_contents.h"
#include "system/files/files.h"
#include "text/names/font_path.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace scrivalen::typeset {
namespace {

const char* problemOf(Embedding embedding) {
  switch (embedding) {
    case Embedding::Allowed: break;
    case Embedding::Forbidden: return "its licence does not allow to embed it";
    case Embedding::OnlyWhole: return "its licence allows to embed it only whole";
    case Embedding::OnlyBitmaps: return "its licence allows to embed it only as bitmaps";
  }
  return nullptr;
}

std::unique_ptr<FontFile> readFont(const FontPath& path, std::string& reason) {
  std::string contents = readFontFile(widePath(path.file), reason);
  if (!reason.empty()) {
    return nullptr;
  }
  auto font = FontFile::read(std::move(contents), path.index, reason);
  if (!font) {
    return nullptr;
  }
  if (const char* const problem = problemOf(font->embedding())) {
    reason = problem;
    return nullptr;
  }
  constexpr std::uint32_t kMissingGlyph[] = {0};
  if (font->subsetOf({}, kMissingGlyph).file.empty()) {
    reason = "it is broken";
    return nullptr;
  }
  return font;
}

}  // namespace

std::vector<std::unique_ptr<FontFile>> readHostFonts(const document::FormatSettings& settings) {
  std::vector<std::unique_ptr<FontFile>> fonts;
  for (const std::string_view value : settings.all("font-file")) {
    std::string reason;
    auto font = readFont(fontPathOf(value), reason);
    if (!font) {
      std::string shown;
      document::Replaced replaced;
      document::appendClean(shown, value, document::TextKind::Line, replaced);
      throw document::OutputFailure(document::Status::FileError, "cannot use the font file '" + shown + "': " + reason);
    }
    fonts.push_back(std::move(font));
  }
  return fonts;
}

}  // namespace scrivalen::typeset
