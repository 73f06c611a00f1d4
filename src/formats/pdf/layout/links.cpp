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

template <typename Source>
void setDestination(Source& source, const Placement* target) {
  if (target) {
    source.destination.target = target->startPage;
    source.destLeft.intValue = toInt(target->x);
    source.destTop.intValue = toInt(target->top);
  }
}

}  // namespace

CPDFlink& LinkTable::named(std::u16string_view name) {
  const auto [found, added] = byName_.try_emplace(std::u16string(name), links_.size());
  if (added) {
    links_.push_back({found->first, {}, nullptr});
  }
  return links_[found->second];
}

void LinkTable::clear() {
  links_.clear();
  byName_.clear();
}

CPDFAnnot& LinkWriter::newAnnotation(CPDFPage& page, const Placement* target) {
  CPDFAnnot& annotation = *file_.AddAnnotation();
  setDestination(annotation, target);
  page.AddAnnotation(annotation);
  return annotation;
}

void LinkWriter::setRectangle(CPDFAnnot& annotation, const Placement& source, Points top, Points bottom) const {
  // The classic form has the upper edge first.
  const bool classic = form_ == Form::Classic;
  annotation.setRectangle(toInt(source.x), toInt(classic ? top : bottom), toInt(source.x + source.width),
                          toInt(classic ? bottom : top));
}

const Placement* LinkWriter::placementOf(const CPDFitem* item) const {
  const auto found = placements_.find(item);
  return found == placements_.end() ? nullptr : &found->second;
}

void LinkWriter::addAnnotation(const CPDFitem* sourceItem, const CPDFitem* targetItem) {
  const Placement* const source = placementOf(sourceItem);
  const Placement* const target = placementOf(targetItem);
  // What leads nowhere is nothing to click on.
  if (!source || (!target && form_ == Form::Conforming)) {
    return;
  }
  CPDFAnnot& annotation = newAnnotation(*source->startPage, target);
  if (source->startPage == source->endPage) {
    setRectangle(annotation, *source, source->top, source->bottom);
    return;
  }
  setRectangle(annotation, *source, source->top, kBottomLimit);
  setRectangle(newAnnotation(*source->endPage, target), *source, paper_.top(), source->bottom);
}

void LinkWriter::addOutlineEntry(std::unique_ptr<std::u16string> title, const OutlinePlace& place,
                                 const CPDFitem* target) {
  CPDFOutLine& entry = file_.make<CPDFOutLine>();
  entry.title = std::move(title);
  setDestination(entry, placementOf(target));
  if (!file_.outlines) {
    file_.CreateOutlines();
  }
  outline_.push_back({place, &entry});
}

void LinkWriter::link(CPDFOutLine& entry, std::size_t level) {
  if (level >= lastOnes_.size()) {
    if (form_ == Form::Classic) {
      return;
    }
    level = lastOnes_.size() - 1;
  }
  entry.linkBelow(*lastOnes_[level], *file_.outlines);
  lastOnes_.resize(level + 1);
  lastOnes_.push_back(&entry);
}

// The entries come link by link, in the order in which the names of their targets first appeared. The classic form
// leaves them so.
void LinkWriter::finishOutline() {
  if (outline_.empty()) {
    return;
  }
  if (form_ == Form::Conforming) {
    std::sort(outline_.begin(), outline_.end(),
              [](const OutlineEntry& a, const OutlineEntry& b) { return a.place.order < b.place.order; });
  }
  lastOnes_ = {file_.outlines};
  for (const OutlineEntry& entry : outline_) {
    link(*entry.object, static_cast<std::size_t>(std::max(entry.place.level, 0)));
  }
  if (form_ == Form::Conforming) {
    countAllBelow();
  }
}

// PDF 1.4, 8.2.2: the count of an open entry is that of all entries below it. The classic form counts its own only.
void LinkWriter::countAllBelow() {
  for (auto entry = outline_.rbegin(); entry != outline_.rend(); ++entry) {
    const CPDFOutLine& object = *entry->object;
    if (object.parent != file_.outlines) {
      object.parent->count += object.count;
    }
  }
}

}  // namespace scrivalen::pdf
