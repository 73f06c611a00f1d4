#include "document/nesting.h"

namespace scrivalen::document {
namespace {

bool isSpan(Part part) { return part >= Part::Span; }

bool canHoldBlocks(Part part) {
  return part == Part::Document || part == Part::Section || part == Part::Quote || part == Part::Item;
}

bool canHoldText(Part part) {
  return part == Part::Heading || part == Part::Paragraph || part == Part::Item || part == Part::Cell || isSpan(part);
}

}  // namespace

const char* nameOf(Part part) {
  switch (part) {
    case Part::Document: return "the document";
    case Part::Section: return "a section";
    case Part::Heading: return "a heading";
    case Part::Paragraph: return "a paragraph";
    case Part::Quote: return "a quote";
    case Part::List: return "a list";
    case Part::Item: return "an item";
    case Part::Code: return "code";
    case Part::Contents: return "the contents";
    case Part::Table: return "a table";
    case Part::Row: return "a row";
    case Part::Cell: return "a cell";
    case Part::Span:
    case Part::Colored:
    case Part::Sized: return "a span";
    case Part::Link: return "a link";
    case Part::Language: return "text of a language";
  }
  return "";
}

bool Nesting::mayHold(Part part) const {
  const OpenPart& inner = open_.back();
  switch (part) {
    case Part::Section: return inner.part == Part::Document;
    case Part::Item: return inner.part == Part::List;
    case Part::Row: return inner.part == Part::Table;
    case Part::Cell: return inner.part == Part::Row;
    case Part::Link: return inner.holdsText && !inner.inLink;
    default: return isSpan(part) ? inner.holdsText : inner.holdsBlocks;
  }
}

Event Nesting::OpenPart::event() const {
  return {.kind = begun,
          .align = align,
          .task = task,
          .span = span,
          .ordered = ordered,
          .tight = tight,
          .number = number,
          .points = points,
          .color = color,
          .background = background};
}

void Nesting::begin(Part part) {
  const bool inLink = open_.back().inLink || part == Part::Link;
  OpenPart& opened = open_.emplace_back();
  opened.part = part;
  opened.holdsBlocks = canHoldBlocks(part);
  opened.holdsText = canHoldText(part);
  opened.inLink = inLink;
}

void Nesting::begin(Part part, const Event& event) {
  begin(part);
  OpenPart& opened = open_.back();
  opened.begun = event.kind;
  opened.align = event.align;
  opened.task = event.task;
  opened.span = event.span;
  opened.ordered = event.ordered;
  opened.tight = event.tight;
  opened.number = event.number;
  opened.points = event.points;
  opened.color = event.color;
  opened.background = event.background;
}

}  // namespace scrivalen::document
