#pragma once

#include "document/model/table.h"
#include "document/model/writer.h"
#include "document/word/held_headings.h"
#include "document/word/word_containers.h"
#include "document/word/word_inlines.h"
#include "document/word/word_paragraphs.h"
#include "document/word/word_sections.h"
#include "document/word/word_tables.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::document {

/// The parts of a file that a word processor reads. None is owned.
struct WordParts {
  WordSections& sections;
  WordInlines& inlines;
  WordTables& tables;
  WordContainers& containers;
  WordParagraphs& paragraphs;
};

/// Writes the blocks of a document as sections, paragraphs and tables of word processors.
class WordBlocks : private EventSink {
 public:
  /// @param parts  must outlive this object, as must @p settings
  WordBlocks(const FormatSettings& settings, const WordParts& parts, bool isRightToLeft)
      : settings_(settings), parts_(parts), isRightToLeft_(isRightToLeft) {}

  void add(const Event& event);
  void beginTable(const Table& table);
  /// Writes what has waited.
  void finish();

 private:
  // Headings that have waited come here, and all else.
  void write(const Event& event) override;

  void writeHeadings(Orientation orientation);
  void writeInline(const Event& event);
  void beginSection(const Event& section);
  void breakPage();
  void flushMarker();
  void beginHeading(const Event& heading);
  void beginList(const Event& list);
  void beginCode(bool isInCode);
  void writeCode(std::string_view text);
  void writeRule();
  void contentsItem(const Event& item);
  void writeContentsItem(bool isLast);

  const FormatSettings& settings_;
  const WordParts parts_;
  const bool isRightToLeft_;
  HeldHeadings headings_;
  struct ContentsEntry {
    int level = 1;
    std::string id, text;
  };
  std::optional<ContentsEntry> entry_;  // whether it is the last is not known yet
  bool isInCode_ = false;
  std::size_t codeBreaks_ = 0;  // line breaks that more code may follow
};

}  // namespace scrivalen::document
