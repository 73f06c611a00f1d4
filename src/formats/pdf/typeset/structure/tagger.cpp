#include "formats/pdf/typeset/structure/tagger.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <cstddef>

namespace scrivalen::typeset {

void Tagger::beginPage(int page, Canvas& canvas) {
  page_ = page;
  canvas_ = &canvas;
  canvas.setTagged();
  pageKey_ = parents_.newKey();
}

void Tagger::endText() {
  if (shown_ != kNothing) {
    canvas_->endMark();
    shown_ = kNothing;
  }
}

void Tagger::showArtifact() {
  if (shown_ != kArtifact) {
    endText();
    canvas_->beginArtifact();
    shown_ = kArtifact;
  }
}

int Tagger::mark(Element& element) {
  const int id = static_cast<int>(elements_.size());
  elements_.push_back(element.number);
  element.addContent(page_, id);
  return id;
}

void Tagger::show(Element& element) {
  if (shown_ != element.number) {
    endText();
    canvas_->beginMark(element.role, mark(element));
    shown_ = element.number;
  }
}

void Tagger::beginImage(Element& element) { canvas_->beginImageMark(element.role, mark(element)); }

void Tagger::beginForm(Element& element) { canvas_->beginFormMark(element.role, mark(element)); }

std::int64_t Tagger::newAnnotationKey(const Element& element) {
  const std::int64_t key = parents_.newKey();
  annotations_.emplace_back(key, element.number);
  return key;
}

void Tagger::writeElements(std::string& object) const {
  Operators out(object, 2 + elements_.size() * (1 + kMostOfReference));
  out.add("[").reference(elements_.front());
  for (std::size_t i = 1; i < elements_.size(); ++i) {
    out.add(" ").reference(elements_[i]);
  }
  out.add("]");
}

std::string Tagger::endPage() {
  endText();
  std::string entries;
  if (!elements_.empty()) {
    const int number = file_.newNumber();
    writeElements(file_.beginStructureObject(number));
    file_.endStructureObject();
    parents_.add(pageKey_, number);
    entries = "/StructParents ";
    appendInteger(entries, pageKey_);
    elements_.clear();
  }
  for (const auto& [key, element] : annotations_) {
    parents_.add(key, element);
  }
  annotations_.clear();
  page_ = 0;
  return entries + "/Tabs/S";
}

int Tagger::finish() { return tree_.finish(parents_.finish(), parents_.nextKey()); }

}  // namespace scrivalen::typeset
