#include "formats/rtf/document/page_header.h"

#include "document/language.h"
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
                const RunStyle& style, bool isRightToLeft) {
  const auto write = [&](std::string_view text) { writeRuns(out, text, isRightToLeft, style); };
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
      isRightToLeft_(isRightToLeft(settings.text("language"))),
      image_(headerImageOf(settings, warnings)),
      imageHeight_(static_cast<int>(paper.top * kHeaderImageShare)),
      fromTop_(image_.picture ? (paper.top - imageHeight_) / 2 : paper.top / 2) {
  if (image_.picture) {
    warnOfTurn(*image_.picture, warnings);
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
  put(out, styles_.words(style, isRightToLeft_));
  put(out, isRightToLeft_ ? "\\rtlpar\\qr" : "");
  put(out, "\\tqc\\tx", textWidth_ / 2);
  put(out, "\\tqr\\tx", textWidth_);
  if (isRightToLeft_) {
    writeRightToLeftStyle(out, styles_.run(style));
  }
  out.put(' ');
  writeLine(out, style, section, setting);
  put(out, "\\par}\n");
}

// What is on the left comes last in a line from right to left. The picture is on the left of it.
void PageHeader::writeLine(OutputBuffer& out, Style style, std::string_view section, std::string_view setting) const {
  const RunningText places = runningTextOf(setting);
  const std::size_t count = setting.empty() && !isRightToLeft_ ? 1 : places.size();
  const bool hasImage = style == Style::Header && image_.picture;
  for (std::size_t i = 0; i < count; ++i) {
    put(out, i > 0 ? "\\tab " : "");
    const std::size_t place = isRightToLeft_ ? places.size() - 1 - i : i;
    if (hasImage && !isRightToLeft_ && place == 0) {
      writeImage(out, setting.empty());
    }
    for (const RunningPiece& piece : places[place]) {
      writePiece(out, piece, settings_, section, styles_.run(style), isRightToLeft_);
    }
    if (hasImage && isRightToLeft_ && place == 0) {
      writeImage(out, setting.empty());
    }
  }
}

void PageHeader::writeImage(OutputBuffer& out, bool isAlone) const {
  put(out, isRightToLeft_ && !isAlone ? " " : "");
  writePicture(out, *image_.picture, {}, image_.widthPt, {textWidth_ / 2, imageHeight_});
  put(out, isRightToLeft_ || isAlone ? "" : " ");
}

}  // namespace scrivalen::document::rtf
