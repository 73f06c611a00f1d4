#include "formats/rtf/document/page_header.h"

#include "document/settings/running_text.h"
#include "formats/rtf/document/escape.h"

#include <algorithm>

namespace scrivalen::document::rtf {
namespace {

bool namesSection(std::string_view setting) {
  const RunningText parts = runningTextOf(setting);
  return std::any_of(parts.begin(), parts.end(), [](const auto& pieces) {
    return std::any_of(pieces.begin(), pieces.end(),
                       [](const RunningPiece& piece) { return piece.field == RunningField::Section; });
  });
}

void writePiece(OutputBuffer& out, const RunningPiece& piece, const FormatSettings& settings,
                std::string_view section) {
  switch (piece.field) {
    case RunningField::None: return writeText(out, piece.text);
    case RunningField::Page: return put(out, "{\\field{\\*\\fldinst PAGE}{\\fldrslt 1}}");
    case RunningField::Pages: return put(out, "{\\field{\\*\\fldinst NUMPAGES}{\\fldrslt 1}}");
    case RunningField::Title: return writeText(out, settings.text("title"));
    case RunningField::Date: return writeText(out, shownDate(settings));
    case RunningField::Section: return writeText(out, section);
  }
}

}  // namespace

PageHeader::PageHeader(const FormatSettings& settings, const StyleSheet& styles, int textWidth)
    : settings_(settings), styles_(styles), textWidth_(textWidth) {}

bool PageHeader::namesSections() const {
  return namesSection(settings_.text("header")) || namesSection(settings_.text("footer"));
}

void PageHeader::write(OutputBuffer& out, std::string_view section) const {
  writeOne(out, "{\\header\\pard\\plain", Style::Header, settings_.text("header"), section);
  writeOne(out, "{\\footer\\pard\\plain", Style::Footer, settings_.text("footer"), section);
}

void PageHeader::writeOne(OutputBuffer& out, std::string_view word, Style style, std::string_view setting,
                          std::string_view section) const {
  if (setting.empty()) {
    return;
  }
  put(out, word);
  put(out, styles_.words(style));
  put(out, "\\tqc\\tx", textWidth_ / 2);
  put(out, "\\tqr\\tx", textWidth_);
  out.put(' ');
  const RunningText parts = runningTextOf(setting);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    put(out, i > 0 ? "\\tab " : "");
    for (const RunningPiece& piece : parts[i]) {
      writePiece(out, piece, settings_, section);
    }
  }
  put(out, "\\par}\n");
}

}  // namespace scrivalen::document::rtf
