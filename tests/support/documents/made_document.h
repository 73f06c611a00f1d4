#pragma once

#include "document/document.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::test {

using Content = std::function<void(document::Document&)>;
using SettingValues = std::vector<std::pair<std::string_view, std::string_view>>;

/// The bytes of a document of one format, with the time 2026-01-31 23:59:58. Fails the test when it cannot be written.
/// @param warnings  gets those of the document; may be null
std::string bytesOfDocument(const document::Format& format, const Content& content, const SettingValues& settings,
                            std::vector<document::Warning>* warnings);

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
