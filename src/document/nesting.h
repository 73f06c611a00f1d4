#pragma once

#include "document/event.h"

#include <cstddef>
#include <cstdint>
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

  /// What an open part gives to the event that ends it.
  struct OpenPart {
    Part part = Part::Document;
    bool holdsBlocks = true;
    bool holdsText = false;
    bool inLink = false;
    Event event{EventKind::Title};  ///< without texts
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
  void end() { open_.pop_back(); }

 private:
  std::vector<OpenPart> open_;
};

}  // namespace scrivalen::document
