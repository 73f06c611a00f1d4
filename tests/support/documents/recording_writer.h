#pragma once

#include "document/document.h"

#include <string>
#include <string_view>

/// A format that writes each event as a line, for tests of what a document passes on:
///
///     begin / heading 1 "One" #one / text "One" / end heading / table 2 / row h1 "a" "b" / ... / finish
namespace scrivalen::test {

extern const document::Format kRecordingFormat;
/// The same format under another name.
extern const document::Format kOtherRecordingFormat;

/// A document with one output that records it.
class RecordedDocument : public document::Document {
 public:
  /// @param outputs  how many outputs it has; the first one is recorded
  explicit RecordedDocument(int outputs = 1);

  /// Closes the document, unless it is closed, and returns the lines.
  std::string lines();
  /// The same without the first line and the last.
  std::string content();
  /// The warnings, one a line, as "count x message".
  std::string warnings();

  /// Makes the stream of the first output fail with ENOSPC after so many bytes.
  void failAfter(std::size_t bytes) { limit_ = bytes; }

 private:
  static int append(void* user, const void* data, std::size_t size);

  std::string bytes_;
  std::size_t limit_ = static_cast<std::size_t>(-1);
};

}  // namespace scrivalen::test
