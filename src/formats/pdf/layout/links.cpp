#include "formats/pdf/layout/links.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>

namespace scrivalen::pdf {

using namespace PDFStuffer;

namespace {

std::int32_t toInt(Points value) {
  return static_cast<std::int32_t>(
      std::clamp<Points>(value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

CPDFlink& LinkTable::linkOf(Indexes& indexes, std::u16string_view key) {
  const auto [found, added] = indexes.try_emplace(std::u16string(key), links_.size());
  if (added) {
    links_.emplace_back();
  }
  return links_[found->second];
}

CPDFlink& LinkTable::named(std::u16string_view name) { return linkOf(byName_, name); }

CPDFlink& LinkTable::outside(std::u16string_view address) {
  CPDFlink& link = linkOf(byAddress_, address);
  link.address = address;
  return link;
}

template <typename Source>
void LinkWriter::setTarget(Source& source, const CPDFlink& link) const {
  source.address = link.address;
  if (const Placement* const target = placementOf(link.target)) {
    source.destination.target = target->startPage;
    source.destLeft.intValue = toInt(target->x);
    source.destTop.intValue = toInt(target->top);
  }
}

CPDFAnnot& LinkWriter::newAnnotation(CPDFPage& page, const CPDFlink& link) {
  CPDFAnnot& annotation = *file_.AddAnnotation();
  setTarget(annotation, link);
  page.AddAnnotation(annotation);
  return annotation;
}

void LinkWriter::setRectangle(CPDFAnnot& annotation, const Placement& source, Points top, Points bottom) const {
  // The classic form writes the upper edge first.
  const bool classic = form_ == Form::Classic;
  annotation.setRectangle(toInt(source.x), toInt(classic ? top : bottom), toInt(source.x + source.width),
                          toInt(classic ? bottom : top));
}

const Placement* LinkWriter::placementOf(const CPDFitem* item) const {
  const auto found = placements_.find(item);
  return found == placements_.end() ? nullptr : &found->second;
}

void LinkWriter::addAnnotation(const CPDFitem* sourceItem, const CPDFlink& link) {
  const Placement* const source = placementOf(sourceItem);
  const bool leadsNowhere = link.address.empty() && !placementOf(link.target);
  // A conforming document has no annotation for a link without a target.
  if (!source || (leadsNowhere && form_ == Form::Conforming)) {
    return;
  }
  CPDFAnnot& annotation = newAnnotation(*source->startPage, link);
  if (source->startPage == source->endPage) {
    setRectangle(annotation, *source, source->top, source->bottom);
    return;
  }
  setRectangle(annotation, *source, source->top, kBottomLimit);
  setRectangle(newAnnotation(*source->endPage, link), *source, paper_.top(), source->bottom);
}

void LinkWriter::addOutlineEntry(std::unique_ptr<std::u16string> title, const OutlinePlace& place,
                                 const CPDFlink& link) {
  CPDFOutLine& entry = file_.make<CPDFOutLine>();
  entry.title = std::move(title);
  setTarget(entry, link);
  if (!file_.outlines) {
    file_.CreateOutlines();
  }
  outline_.push_back({place, &entry});
}

void LinkWriter::attach(CPDFOutLine& entry, std::size_t level) {
  if (level >= lastEntries_.size()) {
    if (form_ == Form::Classic) {
      return;
    }
    level = lastEntries_.size() - 1;
  }
  entry.linkBelow(*lastEntries_[level], *file_.outlines);
  lastEntries_.resize(level + 1);
  lastEntries_.push_back(&entry);
}

// The entries are added link by link, in the order in which their targets first appeared. The classic form keeps that
// order.
void LinkWriter::finishOutline() {
  if (outline_.empty()) {
    return;
  }
  if (form_ == Form::Conforming) {
    std::sort(outline_.begin(), outline_.end(),
              [](const OutlineEntry& a, const OutlineEntry& b) { return a.place.order < b.place.order; });
  }
  lastEntries_ = {file_.outlines};
  for (const OutlineEntry& entry : outline_) {
    attach(*entry.object, static_cast<std::size_t>(std::max(entry.place.level, 0)));
  }
  if (form_ == Form::Conforming) {
    countAllBelow();
  }
}

// PDF 1.4, 8.2.2: the count of an open entry includes all its descendants. The classic form counts only its children.
void LinkWriter::countAllBelow() {
  for (auto entry = outline_.rbegin(); entry != outline_.rend(); ++entry) {
    const CPDFOutLine& object = *entry->object;
    if (object.parent != file_.outlines) {
      object.parent->count += object.count;
    }
  }
}

}  // namespace scrivalen::pdf
