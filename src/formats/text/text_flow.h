#pragma once

#include "document/model/event.h"
#include "formats/text/text_lines.h"
#include "text/columns/line_breaks.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::text {

/// Writes the text of paragraphs and headings, wrapped and aligned, and that of code as it is. A long paragraph is not
/// held: its complete lines are written.
class TextFlow {
 public:
  /// @param lines  not owned; must outlive this object
  explicit TextFlow(TextLines& lines) : lines_(lines) {}

  void beginParagraph(document::Align align) { begin(Mode::Paragraph, align, 0); }
  void beginHeading(int level, document::Align align) { begin(Mode::Heading, align, level); }
  void beginCode() { begin(Mode::Code, document::Align::Auto, 0); }
  bool isOpen() const { return mode_ != Mode::None; }
  void append(std::string_view text);
  /// Ends the text that is open, if any.
  void end();

  void beginLink(std::string_view address) { link_ = OpenLink{std::string(address), text_.size(), false}; }
  /// @return what the reader misses after the link's text: its address; empty if it misses nothing
  std::string endLink();

  void writeParagraph(std::string_view text);
  void writeHeading(std::string_view text, int level);

 private:
  enum class Mode : std::uint8_t { None, Paragraph, Heading, Code };
  struct OpenLink {
    std::string address;
    std::size_t begin;  // of its text
    bool isPartWritten;
  };

  void begin(Mode mode, document::Align align, int level);
  void writeHeldLines();
  void writeLines(std::string_view text);
  void writeUnderlined(std::string_view text, int level);
  void writeCode(std::string_view text);
  std::size_t indentOf(std::size_t columns) const;
  void writeAligned(const Line& line) { lines_.write(line.text, indentOf(line.columns)); }

  TextLines& lines_;
  Mode mode_ = Mode::None;
  std::string text_;  // of the paragraph or heading that is open
  document::Align align_ = document::Align::Auto;
  int level_ = 0;
  std::optional<OpenLink> link_;
};

}  // namespace scrivalen::text
