#include "document/nesting.h"

namespace scrivalen::document {
namespace {

bool isSpan(Part part) { return part >= Part::Span; }

bool holdsBlocks(Part part) {
  return part == Part::Document || part == Part::Section || part == Part::Quote || part == Part::Item;
}

bool holdsText(Part part) {
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

void Nesting::begin(Part part, const Event& event) {
  OpenPart opened;
  opened.part = part;
  opened.holdsBlocks = holdsBlocks(part);
  opened.holdsText = holdsText(part);
  opened.inLink = open_.back().inLink || part == Part::Link;
  opened.event = event;
  opened.event.text = opened.event.id = opened.event.address = opened.event.title = {};
  open_.push_back(opened);
}

}  // namespace scrivalen::document
