#pragma once

#include "text/colors.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace scrivalen::document {

class Picture;

enum class Align : std::uint8_t { Auto, Left, Center, Right, Justify };
enum class Task : std::uint8_t { None, Open, Done };
enum class Span : std::uint8_t { None, Strong, Emphasis, Code, Deleted, Underlined, Superscript, Subscript };

/// The parts of a document but its tables, in reading order. The comment after each kind lists the fields of an event
/// that it uses. The event that ends a part has the fields of the one that began it, its texts excepted.
enum class EventKind : std::uint8_t {
  Title,         ///< text: the document's title, where a reader should see one
  BeginSection,  ///< text: its name; id. Either may be empty
  EndSection,
  BeginHeading,  ///< number: the level, 1 to 6; align; text: the heading's whole text in one line; id: never empty
  EndHeading,
  BeginParagraph,  ///< align
  EndParagraph,
  BeginQuote,
  EndQuote,
  BeginList,  ///< ordered; number: the first item's, if ordered; tight: its items are lines, not paragraphs
  EndList,
  BeginItem,  ///< task
  EndItem,
  BeginCode,  ///< text: the language; may be empty
  EndCode,
  Rule,
  PageBreak,
  BeginContents,
  ContentsItem,  ///< number: the level, 1 to 6; text; id: of the place that it names
  EndContents,

  Text,       ///< text: never empty; a line feed is a line break
  BeginSpan,  ///< span
  EndSpan,
  BeginColored,  ///< color, background
  EndColored,
  BeginSized,  ///< points
  EndSized,
  BeginLink,  ///< address: "#id" leads to a place in the document; title: may be empty
  EndLink,
  BeginLanguage,  ///< text: the tag (BCP 47)
  EndLanguage,
  Anchor,  ///< id
  Image,   ///< picture: null if there is none; text: the alternative text; points: its width
  Raw      ///< text: markup; address: the name of the format that it is for. The writers of others ignore it
};

/// Whether a kind is part of a line of text rather than a block.
constexpr bool isInline(EventKind kind) { return kind >= EventKind::Text; }

/// Texts are clean UTF-8: well-formed, and without control characters but for line feeds, in code also tabs. They are
/// valid only while the event is handled.
struct Event {
  EventKind kind;
  Align align = Align::Auto;
  Task task = Task::None;
  Span span = Span::None;
  bool ordered = false;
  bool tight = false;
  int number = 0;
  double points = 0;  ///< 0 for a picture: its own width
  std::string_view text = {};
  std::string_view id = {};
  std::string_view address = {};
  std::string_view title = {};
  std::optional<Rgb> color = std::nullopt;
  std::optional<Rgb> background = std::nullopt;
  const Picture* picture = nullptr;
};

class EventSink {
 public:
  virtual ~EventSink() = default;
  virtual void write(const Event& event) = 0;
};

}  // namespace scrivalen::document
