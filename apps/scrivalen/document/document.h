#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::command {

/// What a document consists of, in reading order. Behind each kind stands which fields of its event mean something.
enum class EventKind : std::uint8_t {
  BeginHeading,  ///< number: its level, 1 to 6; text: all of its text; address: its anchor name, unique
  EndHeading,    ///< number
  BeginParagraph,
  EndParagraph,
  BeginQuote,
  EndQuote,
  BeginList,  ///< ordered, and then number: where it starts; tight: its items are lines rather than paragraphs
  EndList,    ///< ordered
  BeginItem,  ///< task
  EndItem,
  BeginCodeBlock,  ///< text: the language, may be empty
  EndCodeBlock,
  Rule,
  MarkupBlock,  ///< text: HTML as it was typed
  BeginTable,
  EndTable,
  BeginRow,   ///< header; number: how many cells follow
  EndRow,     ///< header
  BeginCell,  ///< header, align
  EndCell,    ///< header

  Text,  ///< text: a part of the text; in code blocks with its line breaks
  LineBreak,
  Markup,  ///< text: HTML tags and comments as they were typed
  BeginEmphasis,
  EndEmphasis,
  BeginStrong,
  EndStrong,
  BeginDeleted,
  EndDeleted,
  BeginCode,
  EndCode,
  BeginLink,  ///< address; title, may be empty
  EndLink,
  Image,  ///< text: what stands for the image; address; title, may be empty

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

/// Each text is followed by a NUL and valid only while the event is handled.
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

/// What a writer receives before the first event.
struct DocumentSettings {
  std::wstring title;
  std::vector<std::pair<std::wstring, std::wstring>> properties;  ///< placeholders and their values, as typed
  std::wstring templateFile;                                      ///< empty: the format's choice
  std::wstring styles;
  std::wstring columnSeparator = L"\t";
  bool landscape = false;
  bool singleByte = false;
  bool conforming = true;
  bool beginsWithTable = false;
};

/// Turns a document's events into calls of a report of its own.
class DocumentWriter : public EventSink {
 public:
  /// Raises InputError when something else cannot be read that the document is made with.
  /// @return false with the reason in error()
  virtual bool open(const std::wstring& file, const DocumentSettings& settings) = 0;
  /// @return false when what was written did not all reach the file, with the reason in error()
  virtual bool close() = 0;
  virtual std::wstring error() const = 0;
  /// The folder in which it makes files that its output consists of, without a separator at its end; empty: none.
  virtual std::wstring workFolder() const { return {}; }
};

}  // namespace scrivalen::command
