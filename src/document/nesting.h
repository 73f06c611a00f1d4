#pragma once

#include "document/model/event.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace scrivalen::document {

/// The parts of a document that begin and end.
enum class Part : std::uint8_t {
  Document,
  Section,
  Heading,
  Paragraph,
  Quote,
  List,
  Item,
  Code,
  Contents,
  Table,
  Row,
  Cell,
  Span,
  Colored,
  Sized,
  Link,
  Language
};

/// A part as a sentence names it: "a paragraph".
const char* nameOf(Part part);

/// The parts that are open, the innermost last, and what may be in what.
class Nesting {
 public:
  static constexpr std::size_t kDeepest = 1000;

  /// An open part, with what the event that ends it needs.
  struct OpenPart {
    Part part = Part::Document;
    bool holdsBlocks = true;
    bool holdsText = false;
    bool inLink = false;
    EventKind begun = EventKind::Title;
    Align align = Align::Auto;
    Task task = Task::None;
    Span span = Span::None;
    bool ordered = false;
    bool tight = false;
    int number = 0;
    double points = 0;
    std::optional<Rgb> color = std::nullopt;
    std::optional<Rgb> background = std::nullopt;

    /// The event that began the part, without its texts.
    Event event() const;
  };

  Nesting() : open_(1) {}

  const OpenPart& innermost() const { return open_.back(); }
  bool isIn(Part part) const { return open_.back().part == part; }
  bool isEmpty() const { return open_.size() == 1; }
  std::size_t depth() const { return open_.size(); }
  /// Whether the innermost part may hold this one.
  bool mayHold(Part part) const;
  bool isFull() const { return open_.size() > kDeepest; }

  /// @param event  the event that begins the part
  void begin(Part part, const Event& event);
  /// A part of a table, which has no event.
  void begin(Part part);
  void end() { open_.pop_back(); }

 private:
  std::vector<OpenPart> open_;
};

}  // namespace scrivalen::document
