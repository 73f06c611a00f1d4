#pragma once

#include "output/markup_text.h"
#include "output/output_buffer.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

// What the parts of a document are made of: markup, numbers and clean texts.
namespace scrivalen::document::docx {

inline constexpr std::string_view kXmlStart = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

inline void put(OutputBuffer& out, std::string_view markup) { out.write(markup.data(), markup.size()); }

/// Writes a number between two pieces of markup, as in `<w:sz w:val="22"/>`.
inline void put(OutputBuffer& out, std::string_view before, std::int64_t number, std::string_view after) {
  constexpr std::size_t kDigits = 20;
  put(out, before);
  char* const at = out.reserve(kDigits);
  out.advance(std::to_chars(at, at + kDigits, number).ptr);
  put(out, after);
}

/// Writes the content of an element. The text is clean, so nothing of it is replaced.
inline void putContent(OutputBuffer& out, std::string_view text) { MarkupText().content(out, text, "\n"); }

/// Writes an attribute's value, without its quotation marks.
inline void putValue(OutputBuffer& out, std::string_view text) { MarkupText().value(out, text); }

/// Collects what is written.
struct TextSink : ByteSink {
  bool take(const char* data, std::size_t size) override {
    text.append(data, size);
    return true;
  }
  std::string text;
};

/// The texts one after another.
inline std::string joined(std::initializer_list<std::string_view> texts) {
  std::string result;
  for (const std::string_view text : texts) {
    result += text;
  }
  return result;
}

/// The start tag of a part that has the namespaces of texts, links and pictures.
inline constexpr std::string_view kNamespaces =
    " xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\""
    " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\""
    " xmlns:wp=\"http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing\""
    " xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\""
    " xmlns:pic=\"http://schemas.openxmlformats.org/drawingml/2006/picture\">";

}  // namespace scrivalen::document::docx
