#include "formats/pdf/typeset/structure/structure_tree.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <utility>

namespace scrivalen::typeset {

void Element::addToRun(RunKind kind, int kid) {
  if (kind != runKind_ || kid != runFirst_ + runCount_) {
    endRun();
    runKind_ = kind;
    runFirst_ = kid;
  }
  ++runCount_;
  ++count;
}

void Element::appendRun(Operators& out) const {
  for (int kid = runFirst_; kid < runFirst_ + runCount_; ++kid) {
    out.number(kid).add(runKind_ == RunKind::Elements ? " 0 R " : " ");
  }
}

void Element::endRun() {
  if (runCount_ > 0) {
    Operators out(kids_, mostOfRun());
    appendRun(out);
    runCount_ = 0;
  }
  runKind_ = RunKind::None;
}

void Element::addContent(int onPage, int id) {
  page = page == 0 ? onPage : page;
  if (page == onPage) {
    return addToRun(RunKind::Contents, id);
  }
  endRun();
  Operators(kids_).add("<</Type/MCR/Pg ").reference(onPage).add("/MCID ").number(id).add(">> ");
  ++count;
}

void Element::addAnnotation(int onPage, int annotation) {
  endRun();
  Operators(kids_).add("<</Type/OBJR/Pg ").reference(onPage).add("/Obj ").reference(annotation).add(">> ");
  ++count;
}

void Element::appendTo(std::string& object) const {
  constexpr std::size_t kMostOfKeys = 32 + 2 * kMostOfReference;
  const std::size_t size = role.size() + attributes.size() + texts.size() + kids_.size();
  Operators out(object, kMostOfKeys + size + mostOfRun());
  out.add("<</S/").add(role).add("/P ").reference(parent).add(attributes).add(texts);
  if (page != 0) {
    out.add("/Pg ").reference(page);
  }
  if (count > 0) {
    out.add(count > 1 ? "/K[" : "/K ").add(kids_);
    appendRun(out);
    out.removeLast().add(count > 1 ? "]" : "");
  }
  out.add(">>");
}

StructureTree::StructureTree(PdfFile& file) : file_(file), root_(file.newNumber()) {
  open_.push_back({Element(file_.newNumber(), root_, "Document")});
}

Element& StructureTree::parentOfNext() {
  Open& open = open_.back();
  if (open.element.count < kMostKids && open.group.number == 0) {
    return open.element;
  }
  if (open.group.number == 0 || open.group.count == kMostKids) {
    if (open.group.number != 0) {
      write(open.group);
    }
    open.group = addTo(open.element, "NonStruct");
  }
  return open.group;
}

Element StructureTree::addTo(Element& parent, std::string_view role) {
  const int number = file_.newNumber();
  parent.addKid(number);
  return Element(number, parent.number, role);
}

Element StructureTree::add(std::string_view role, std::string_view attributes) {
  Element element = addTo(parentOfNext(), role);
  element.attributes = attributes;
  return element;
}

void StructureTree::begin(std::string_view role, std::string_view attributes, std::string texts) {
  Element element = add(role, attributes);
  element.texts = std::move(texts);
  open_.push_back({std::move(element)});
}

void StructureTree::end() {
  if (open_.back().group.number != 0) {
    write(open_.back().group);
  }
  write(open_.back().element);
  open_.pop_back();
}

void StructureTree::write(const Element& element) {
  element.appendTo(file_.beginStructureObject(element.number));
  file_.endStructureObject();
}

int StructureTree::finish(int parents, std::int64_t nextKey) {
  const int document = open_.front().element.number;
  while (!open_.empty()) {
    end();
  }
  std::string object = "<</Type/StructTreeRoot/K ";
  appendReference(object, document);
  object += "/ParentTree ";
  appendReference(object, parents);
  object += "/ParentTreeNextKey ";
  appendInteger(object, nextKey);
  object += "/RoleMap<</Title/P>>>>";
  file_.writeStructureObject(root_, object);
  return root_;
}

}  // namespace scrivalen::typeset
