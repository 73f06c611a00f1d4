#pragma once

#include "document/document.h"

#include <string>

namespace scrivalen::test {

/// A document with one output, in memory.
class MadeDocument : public document::Document {
 public:
  /// @param format  not owned; must outlive the document
  explicit MadeDocument(const document::Format& format) { addStream(format, &append, &bytes_); }

  /// Closes the document, unless it is closed, and returns what was written.
  const std::string& bytes() {
    close();
    return bytes_;
  }
  /// The warnings, one a line, as "count x message".
  std::string warnings();

  /// Adds a row of texts.
  void addRow(std::initializer_list<std::string_view> cells, bool header = false);
  /// Adds a text in a span.
  void addSpan(document::Span span, std::string_view text);

 private:
  static int append(void* bytes, const void* data, std::size_t size);

  std::string bytes_;
};

}  // namespace scrivalen::test
