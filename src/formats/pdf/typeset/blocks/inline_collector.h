#pragma once

#include "document/model/event.h"
#include "formats/pdf/typeset/text/styled_text.h"

#include <string>
#include <vector>

namespace scrivalen::typeset {

/// Collects the text of a block or cell with its styles.
class InlineCollector : public document::EventSink {
 public:
  /// Begins a text whose usual style this is.
  void begin(const TextStyle& style);
  /// Takes a part of a line of text.
  void write(const document::Event& event) override;
  void add(std::string_view utf8) { text_.add(utf8, styles_.back()); }
  /// A place before what comes next.
  void addAnchor(std::string_view name) { text_.anchors.push_back({text_.text.size(), std::string(name)}); }
  bool isEmpty() const { return text_.isEmpty(); }
  const TextStyle& style() const { return styles_.back(); }
  /// The text so far, which is then empty.
  StyledText take();

 private:
  void addPicture(const document::Event& event);
  void beginSpan(document::Span span);
  void push(const TextStyle& style) { styles_.push_back(style); }

  StyledText text_;
  std::vector<TextStyle> styles_ = std::vector<TextStyle>(1);
};

}  // namespace scrivalen::typeset
