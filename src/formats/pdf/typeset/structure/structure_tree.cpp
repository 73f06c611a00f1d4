#include "formats/pdf/typeset/structure/structure_tree.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <utility>

namespace scrivalen::typeset {

void Element::beginKid() {
  kids += count == 0 ? "" : " ";
  ++count;
}

void Element::addKid(int element) {
  beginKid();
  appendReference(kids, element);
}

void Element::addContent(int onPage, int id) {
  beginKid();
  page = page == 0 ? onPage : page;
  if (page == onPage) {
    return appendInteger(kids, id);
  }
  kids += "<</Type/MCR/Pg ";
  appendReference(kids, onPage);
  kids += "/MCID ";
  appendInteger(kids, id);
  kids += ">>";
}

void Element::addAnnotation(int onPage, int annotation) {
  beginKid();
  kids += "<</Type/OBJR/Pg ";
  appendReference(kids, onPage);
  kids += "/Obj ";
  appendReference(kids, annotation);
  kids += ">>";
}

StructureTree::StructureTree(PdfFile& file) : file_(file), root_(file.newNumber()) {
  open_.push_back({Element{file_.newNumber(), root_, "Document", ""}});
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
  return Element{number, parent.number, role, ""};
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
  object_ = "<</S/";
  object_ += element.role;
  object_ += "/P ";
  appendReference(object_, element.parent);
  object_ += element.attributes;
  object_ += element.texts;
  if (element.page != 0) {
    object_ += "/Pg ";
    appendReference(object_, element.page);
  }
  if (element.count > 0) {
    object_ += element.count > 1 ? "/K[" : "/K ";
    object_ += element.kids;
    object_ += element.count > 1 ? "]" : "";
  }
  object_ += ">>";
  file_.writeStructureObject(element.number, object_);
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
