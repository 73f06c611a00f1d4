#pragma once

#include "document/model/event.h"
#include "document/model/warnings.h"
#include "formats/pdf/typeset/pictures/picture_writer.h"
#include "formats/pdf/typeset/text/styled_text.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::typeset {

/// Collects the text of a block or cell with its styles.
class InlineCollector : public document::EventSink {
 public:
  /// @param pictures, warnings  not owned; must outlive this object. Null: pictures are only measured
  InlineCollector(PictureWriter* pictures, document::OutputWarnings* warnings)
      : pictures_(pictures), warnings_(warnings) {}

  /// Begins a text whose usual style this is.
  /// @param largestSize  that a part of it may ask for; one that asks for more gets this
  void begin(const TextStyle& style, Length largestSize = kAnySize);
  /// Takes a part of a line of text.
  void write(const document::Event& event) override;
  void add(std::string_view utf8) { text_.add(utf8, styles_.back()); }
  /// A place before what comes next.
  void addAnchor(std::string_view name) { text_.anchors.push_back({text_.text.size(), std::string(name)}); }
  /// The places that no text has come after.
  std::vector<TextAnchor> takeAnchors() { return std::exchange(text_.anchors, {}); }
  bool isEmpty() const { return text_.isEmpty(); }
  const TextStyle& style() const { return styles_.back(); }
  /// The text so far, which is then empty.
  StyledText take();

 private:
  static constexpr Length kAnySize = Length{1} << 40;

  std::optional<int> objectOf(const document::Picture& picture);
  void addPicture(const document::Event& event);
  void beginLink(std::string_view address);
  void beginSpan(document::Span span);
  void push(const TextStyle& style) { styles_.push_back(style); }

  PictureWriter* pictures_;
  document::OutputWarnings* warnings_;
  StyledText text_;
  Length largestSize_ = kAnySize;
  std::vector<TextStyle> styles_ = std::vector<TextStyle>(1);
};

}  // namespace scrivalen::typeset
