#include "formats/rtf/document/page_header.h"

#include "document/settings/running_text.h"
#include "formats/rtf/document/escape.h"
#include "formats/rtf/document/picture.h"

#include <algorithm>
#include <utility>

namespace scrivalen::document::rtf {
namespace {

bool namesSection(std::string_view setting) {
  const RunningText parts = runningTextOf(setting);
  return std::any_of(parts.begin(), parts.end(), [](const auto& pieces) {
    return std::any_of(pieces.begin(), pieces.end(),
                       [](const RunningPiece& piece) { return piece.field == RunningField::Section; });
  });
}

void writePiece(OutputBuffer& out, const RunningPiece& piece, const FormatSettings& settings, std::string_view section,
                const RunStyle& style) {
  const auto write = [&](std::string_view text) { writeRuns(out, text, false, style); };
  switch (piece.field) {
    case RunningField::None: return write(piece.text);
    case RunningField::Page: return put(out, "{\\field{\\*\\fldinst PAGE}{\\fldrslt 1}}");
    case RunningField::Pages: return put(out, "{\\field{\\*\\fldinst NUMPAGES}{\\fldrslt 1}}");
    case RunningField::Title: return write(settings.text("title"));
    case RunningField::Date: return write(shownDate(settings));
    case RunningField::Section: return write(section);
  }
}

}  // namespace

PageHeader::PageHeader(const FormatSettings& settings, const StyleSheet& styles, const PageTwips& paper,
                       OutputWarnings& warnings)
    : settings_(settings),
      styles_(styles),
      image_(headerImageOf(settings, warnings)),
      imageHeight_(static_cast<int>(paper.top * kHeaderImageShare)),
      fromTop_(image_.picture ? (paper.top - imageHeight_) / 2 : paper.top / 2) {
  if (image_.picture && isTurned(*image_.picture)) {
    warnings.add(WarningCode::SomethingLeftOut, kTurnedWarning);
  }
}

void PageHeader::write(OutputBuffer& out, std::string_view section, int textWidth) {
  const bool isNew = std::exchange(textWidth_, textWidth) != textWidth;
  const std::string_view header = settings_.text("header");
  const std::string_view footer = settings_.text("footer");
  if ((image_.picture || !header.empty()) && (isNew || namesSection(header))) {
    put(out, "{\\header\\pard\\plain");
    writePart(out, Style::Header, section, header);
  }
  if (!footer.empty() && (isNew || namesSection(footer))) {
    put(out, "{\\footer\\pard\\plain");
    writePart(out, Style::Footer, section, footer);
  }
}

void PageHeader::writePart(OutputBuffer& out, Style style, std::string_view section, std::string_view setting) const {
  put(out, styles_.words(style));
  put(out, "\\tqc\\tx", textWidth_ / 2);
  put(out, "\\tqr\\tx", textWidth_);
  out.put(' ');
  if (style == Style::Header && image_.picture) {
    writePicture(out, *image_.picture, {}, image_.widthPt, {textWidth_ / 2, imageHeight_});
    put(out, setting.empty() ? "" : " ");
  }
  const RunningText parts = runningTextOf(setting);
  for (std::size_t i = 0; i < parts.size() && !setting.empty(); ++i) {
    put(out, i > 0 ? "\\tab " : "");
    for (const RunningPiece& piece : parts[i]) {
      writePiece(out, piece, settings_, section, styles_.run(style));
    }
  }
  put(out, "\\par}\n");
}

}  // namespace scrivalen::document::rtf
