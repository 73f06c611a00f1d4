#include "formats/text/text_flow.h"

#include "formats/text/text_links.h"

#include <algorithm>
#include <utility>

namespace scrivalen::text {
namespace {

using document::Align;

// The text of a paragraph that is held. Then its complete lines are written.
constexpr std::size_t kMostBytesHeld = 65536;
constexpr std::size_t kIndentOfCode = 4;
constexpr std::string_view kUnderlines = "=-~...";  // by the level of the heading

std::string_view withoutAtEnd(std::string_view text, std::string_view characters) {
  return text.substr(0, text.find_last_not_of(characters) + 1);
}

}  // namespace

void TextFlow::begin(Mode mode, Align align, int level) {
  mode_ = mode;
  align_ = align;
  level_ = level;
  text_.clear();
}

void TextFlow::append(std::string_view text) {
  if (mode_ == Mode::Code) {
    return writeCode(text);
  }
  text_ += text;
  if (text_.size() > kMostBytesHeld && mode_ == Mode::Paragraph) {
    writeHeldLines();
  }
}

void TextFlow::end() {
  switch (mode_) {
    case Mode::Paragraph: writeLines(text_); break;
    case Mode::Heading: writeUnderlined(text_, level_); break;
    case Mode::Code: lines_.endPart(); break;
    case Mode::None: break;
  }
  mode_ = Mode::None;
  text_.clear();
}

// A blank at the end of the link's text comes after the address.
std::string TextFlow::endLink() {
  const OpenLink link = *std::exchange(link_, std::nullopt);
  const std::string_view text = link.isPartWritten ? text_ : std::string_view(text_).substr(link.begin);
  const std::size_t shown = text.find_last_not_of(' ') + 1;
  if (!needsAddress(link.isPartWritten ? "" : text.substr(0, shown), link.address)) {
    return {};
  }
  const std::string blank(shown < text.size() ? 1 : 0, ' ');
  if (shown == 0 && !link.isPartWritten) {
    return link.address + blank;
  }
  text_.resize(text_.size() - (text.size() - shown));
  return " (" + link.address + ")" + blank;
}

void TextFlow::writeParagraph(std::string_view text) {
  align_ = Align::Auto;
  writeLines(text);
}

void TextFlow::writeHeading(std::string_view text, int level) {
  align_ = Align::Auto;
  writeUnderlined(text, level);
}

// Writes the lines of a paragraph but the last, which goes on; or a part of it, if it is too long to be held.
void TextFlow::writeHeldLines() {
  LineReader reader(text_, lines_.columns());
  const char* rest = reader.position();
  Line line;
  while (reader.next(line) && !reader.isAtEnd()) {
    writeAligned(line);
    rest = reader.position();
  }
  std::size_t written = static_cast<std::size_t>(rest - text_.data());
  if (written == 0) {
    const std::string_view part = withoutAtEnd(text_, " \n");
    written = part.empty() ? text_.size() : part.size();
    lines_.writePart(part);
  }
  text_.erase(0, written);
  if (link_) {
    link_->isPartWritten = true;
  }
}

std::size_t TextFlow::indentOf(std::size_t columns) const {
  const std::size_t blanks = lines_.columns() > columns ? lines_.columns() - columns : 0;
  switch (align_) {
    case Align::Center: return blanks / 2;
    case Align::Right: return blanks;
    default: return 0;
  }
}

void TextFlow::writeLines(std::string_view text) {
  if (text.empty()) {
    lines_.endPart();
    return;
  }
  LineReader reader(text, lines_.columns());
  Line line;
  while (reader.next(line)) {
    writeAligned(line);
  }
}

void TextFlow::writeUnderlined(std::string_view text, int level) {
  if (text.empty()) {
    return;
  }
  LineReader reader(text, lines_.columns());
  Line line;
  std::size_t longest = 0;
  while (reader.next(line)) {
    writeAligned(line);
    longest = std::max(longest, line.columns);
  }
  const auto index = static_cast<std::size_t>(std::clamp(level, 1, 6)) - 1;
  lines_.write(std::string(longest, kUnderlines[index]), indentOf(longest));
}

// Code is not wrapped, so nothing of it is held: its last line stays open until its line end, or the end of the code.
void TextFlow::writeCode(std::string_view text) {
  for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
    lines_.write(text.substr(0, end), kIndentOfCode);
    text.remove_prefix(end + 1);
  }
  if (!text.empty()) {
    lines_.writePart(text, kIndentOfCode);
  }
}

}  // namespace scrivalen::text
