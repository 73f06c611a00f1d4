#include "formats/pdf/objects/outline.h"

#include "formats/pdf/objects/destination.h"

namespace PDFStuffer {

void CPDFOutLines::Write(CPDFMemBlock& out) {
  addName(u"Type", u"Outlines");
  addNumber(u"Count", static_cast<std::int32_t>(count));
  if (first || !out.isConforming()) {
    addReference(u"First", first);
    addReference(u"Last", last);
  }
  if (first || out.isConforming()) {
    CPDFDictionary::Write(out);
  }
}

void CPDFOutLine::addLink(const char16_t* key, const CPDFObject* node) {
  if (node) {
    addReference(key, node);
  }
}

void CPDFOutLine::Write(CPDFMemBlock& out) {
  addName(u"Type", u"Outline");
  if (count != 0) {
    addNumber(u"Count", static_cast<std::int32_t>(count));
  }
  if (title || out.isConforming()) {
    add(u"Title", std::make_unique<CPDFString>(title ? *title : u""));
  }
  if (address.empty()) {
    addDestination(*this, destination, destLeft, destTop, out.form());
  } else {
    addUriAction(*this, address);
  }
  addLink(u"First", first);
  addLink(u"Last", last);
  addLink(u"Prev", prev);
  addLink(u"Parent", parent);
  addLink(u"Next", next);
  CPDFDictionary::Write(out);
}

void CPDFOutLine::linkBelow(OutlineNode& node, CPDFOutLines& root) {
  if (node.last) {
    prev = node.last;
    node.last->next = this;
  } else {
    node.first = this;
  }
  node.last = this;
  parent = &node;
  ++node.count;
  if (&node != &root) {
    ++root.count;
  }
}

}  // namespace PDFStuffer
