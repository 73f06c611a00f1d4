#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::command {

/// The parts of a document, in reading order. The comment after each kind lists the event fields that it uses.
enum class EventKind : std::uint8_t {
  BeginHeading,  ///< number: the level, 1 to 6; text: the heading's whole text; address: its unique anchor name
  EndHeading,    ///< number
  BeginParagraph,
  EndParagraph,
  BeginQuote,
  EndQuote,
  BeginList,  ///< ordered; number: the first number, if ordered; tight: the items are lines, not paragraphs
  EndList,    ///< ordered
  BeginItem,  ///< task
  EndItem,
  BeginCodeBlock,  ///< text: the language; may be empty
  EndCodeBlock,
  Rule,
  MarkupBlock,  ///< text: raw HTML
  BeginTable,
  EndTable,
  BeginRow,   ///< header; number: the number of cells
  EndRow,     ///< header
  BeginCell,  ///< header, align
  EndCell,    ///< header

  Text,  ///< text: a run of text; in code blocks with its line breaks
  LineBreak,
  Markup,  ///< text: raw HTML tags and comments
  BeginEmphasis,
  EndEmphasis,
  BeginStrong,
  EndStrong,
  BeginDeleted,
  EndDeleted,
  BeginCode,
  EndCode,
  BeginLink,  ///< address; title; may be empty
  EndLink,
  Image,  ///< text: the alternative text; address; title; may be empty

  BeginContents,
  ContentsItem,  ///< number: the heading's level; text; address: the heading's anchor name
  EndContents
};

enum class Align : std::uint8_t { Default, Left, Center, Right };
enum class Task : std::uint8_t { None, Open, Done };

enum class EventGroup : std::uint8_t { Block, Table, Inline, Contents };

constexpr EventGroup groupOf(EventKind kind) {
  if (kind < EventKind::BeginTable) {
    return EventGroup::Block;
  }
  if (kind < EventKind::Text) {
    return EventGroup::Table;
  }
  return kind < EventKind::BeginContents ? EventGroup::Inline : EventGroup::Contents;
}

/// Each text is followed by a NUL and is valid only while the event is handled.
struct Event {
  EventKind kind;
  Align align = Align::Default;
  Task task = Task::None;
  bool header = false;
  bool ordered = false;
  bool tight = false;
  int number = 0;
  std::wstring_view text = L"";
  std::wstring_view address = L"";
  std::wstring_view title = L"";
};

class EventSink {
 public:
  virtual ~EventSink() = default;
  virtual void write(const Event& event) = 0;
};

/// The settings that a writer gets before the first event.
struct DocumentSettings {
  std::wstring title;
  std::vector<std::pair<std::wstring, std::wstring>> properties;  ///< placeholders and their values, as given
  std::wstring templateFile;                                      ///< empty: the format's default
  std::wstring styles;
  std::wstring columnSeparator = L"\t";
  bool landscape = false;
  bool singleByte = false;
  bool conforming = true;
  bool beginsWithTable = false;
};

/// Writes a document's events through a report that it owns.
class DocumentWriter : public EventSink {
 public:
  /// Raises InputError when another input of the document, such as a template, cannot be read.
  /// @return false on failure, with the reason in error()
  virtual bool open(const std::wstring& file, const DocumentSettings& settings) = 0;
  /// @return false when the file is incomplete, with the reason in error()
  virtual bool close() = 0;
  virtual std::wstring error() const = 0;
  /// The folder for temporary parts of the output, without a trailing separator; empty if there is none.
  virtual std::wstring workFolder() const { return {}; }
};

}  // namespace scrivalen::command
