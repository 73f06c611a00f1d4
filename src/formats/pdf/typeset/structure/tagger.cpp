#include "formats/pdf/typeset/structure/tagger.h"

#include "formats/pdf/typeset/file/syntax.h"

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

std::string Tagger::endPage() {
  endText();
  std::string entries;
  if (!elements_.empty()) {
    std::string list = "[";
    for (const int element : elements_) {
      list += list.size() == 1 ? "" : " ";
      appendReference(list, element);
    }
    list += ']';
    const int number = file_.newNumber();
    file_.writeStructureObject(number, list);
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
