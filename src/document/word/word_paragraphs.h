#pragma once

#include "document/model/event.h"
#include "document/model/event_log.h"
#include "document/word/word_containers.h"
#include "document/word/word_inlines.h"
#include "document/word/word_sections.h"
#include "text/direction.h"

#include <string_view>

namespace scrivalen::document {

/// How a paragraph begins.
struct ParagraphStart {
  BlockKind kind = BlockKind::Normal;
  int level = 1;  ///< of a heading, or of an entry in the contents
  Align align = Align::Auto;
  bool isLast = false;  ///< of the contents, before the text after them
};

/// The paragraphs of a word processor's file. The first letter or language decides whether one is written from right to
/// left; what comes before it waits.
class WordParagraphs {
 public:
  /// @param sections, containers, inlines  not owned; must outlive this object
  /// @param isRightToLeft                  whether the document is
  WordParagraphs(WordSections& sections, const WordContainers& containers, WordInlines& inlines, bool isRightToLeft)
      : sections_(sections), containers_(containers), inlines_(inlines), isRightToLeft_(isRightToLeft) {}
  WordParagraphs(const WordParagraphs&) = delete;
  WordParagraphs& operator=(const WordParagraphs&) = delete;
  virtual ~WordParagraphs() = default;

  /// The orientation of the pages of the next paragraphs.
  void setOrientation(Orientation orientation) { orientation_ = orientation; }

  /// Begins a paragraph whose direction its content decides.
  void begin(const ParagraphStart& start);
  /// Begins one whose direction is known. Neutral: that of the document.
  void begin(const ParagraphStart& start, Direction direction);
  bool isOpen() const { return isOpen_; }
  /// Writes a part of the text.
  void write(const Event& event);
  void close();

  /// Writes a whole paragraph of plain text.
  void write(const ParagraphStart& start, std::string_view text);
  void writeEmpty();

 private:
  /// Writes all that precedes the text: the properties, places that have waited, and a marker.
  virtual void writeBegin(const ParagraphStart& start, bool isRightToLeft) = 0;
  virtual void writeEnd() = 0;

  void decide(Direction direction);

  WordSections& sections_;
  const WordContainers& containers_;
  WordInlines& inlines_;
  const bool isRightToLeft_;

  Orientation orientation_ = Orientation::Upright;
  bool isOpen_ = false;
  bool isWaiting_ = false;
  ParagraphStart start_;
  EventLog waiting_;
};

}  // namespace scrivalen::document
