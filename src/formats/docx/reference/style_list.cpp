#include "formats/docx/reference/style_list.h"

#include "formats/docx/reference/schema.h"
#include "output/archive/zip_reader.h"
#include "text/ascii.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace scrivalen::document::docx {
namespace {

constexpr std::size_t kMostStyles = 10'000;
constexpr std::size_t kMostBases = 100;  // looking further would take long, and no style in use needs it

constexpr std::string_view kStyleTypes[] = {"paragraph", "character", "table", "numbering"};

bool isTrue(std::string_view value) { return value == "1" || value == "true" || value == "on"; }

std::string_view numberOf(const XmlElement& style) {
  const XmlElement* const paragraph = style.child("w:pPr");
  const XmlElement* const numbering = paragraph == nullptr ? nullptr : paragraph->child("w:numPr");
  return numbering == nullptr ? std::string_view() : numbering->childValue("w:numId");
}

// Number 0 is none (ECMA-376, 17.9.18).
bool hasNumber(const XmlElement& style) {
  const std::string_view number = numberOf(style);
  return !number.empty() && number != "0";
}

// A level without a number, as in titles, is nothing either.
void removeNumbers(XmlElement& element) {
  std::erase_if(element.children,
                [](const XmlElement& child) { return child.name == "w:numPr" && child.childValue("w:numId") != "0"; });
  for (XmlElement& child : element.children) {
    removeNumbers(child);
  }
}

// Removes a child that leads to no style, or one of the wrong type.
void mendReference(XmlElement& style, std::string_view child, const XmlElement* target, std::string_view type) {
  if (target == nullptr || typeOf(*target) != type) {
    style.removeChildren(child);
  }
}

// The names of a text with commas between them, in lower case.
std::vector<std::string> namesIn(std::string_view text) {
  std::vector<std::string> names;
  while (!text.empty()) {
    std::string_view one = text.substr(0, text.find(','));
    text.remove_prefix(std::min(one.size() + 1, text.size()));
    one.remove_prefix(std::min(one.find_first_not_of(' '), one.size()));
    if (!one.empty()) {
      names.push_back(asciiLowered(one));
    }
  }
  return names;
}

}  // namespace

std::string_view idOf(const XmlElement& style) { return style.attribute("w:styleId"); }
std::string_view typeOf(const XmlElement& style) { return style.attribute("w:type"); }
std::string_view nameOf(const XmlElement& style) { return style.childValue("w:name"); }
bool isDefault(const XmlElement& style) { return isTrue(style.attribute("w:default")); }

StyleList::StyleList(XmlElement root) {
  for (XmlElement& child : root.children) {
    const bool isNumbered = hasNumber(child);
    removeNumbers(child);
    if (child.name == "w:style") {
      if (isNumbered) {
        numbered_.emplace(idOf(child));
      }
      takeStyle(std::move(child));
    } else if (child.name == "w:docDefaults" || child.name == "w:latentStyles") {
      putInSchemaOrder(child);
      before_.push_back(std::move(child));
    }
  }
  std::stable_sort(before_.begin(), before_.end(),
                   [](const XmlElement& a, const XmlElement& b) { return a.name < b.name; });
  before_.erase(std::unique(before_.begin(), before_.end(),
                            [](const XmlElement& a, const XmlElement& b) { return a.name == b.name; }),
                before_.end());
  removeDuplicates();
  keepOneDefault();
  mendReferences();
  breakCircles();
  for (std::size_t i = 0; i < styles_.size(); ++i) {
    ids_.emplace(idOf(styles_[i]), i);
  }
  addNames();
}

// A style of numbering says nothing without it, unless it is the default. One without a type is a paragraph's
// (ECMA-376, 17.7.4.17).
void StyleList::takeStyle(XmlElement style) {
  if (typeOf(style).empty()) {
    style.setAttribute("w:type", "paragraph");
  }
  const bool isKnown =
      std::find(std::begin(kStyleTypes), std::end(kStyleTypes), typeOf(style)) != std::end(kStyleTypes);
  if (!isKnown || idOf(style).empty() || (typeOf(style) == "numbering" && !isDefault(style))) {
    return;
  }
  putInSchemaOrder(style);
  if (nameOf(style).empty()) {
    style.removeChildren("w:name");
    insertInOrder(style, {"w:name", {{"w:val", std::string(idOf(style))}}});
  }
  if (styles_.size() == kMostStyles) {
    throw ArchiveError("it has more than 10,000 styles");
  }
  styles_.push_back(std::move(style));
}

// The first of an id, and of a name in a type.
void StyleList::removeDuplicates() {
  std::set<std::string> ids;
  std::set<std::pair<std::string, std::string>> names;
  std::erase_if(styles_, [&](const XmlElement& style) {
    return !ids.emplace(idOf(style)).second || !names.emplace(typeOf(style), asciiLowered(nameOf(style))).second;
  });
}

// The last of a type counts (ECMA-376, 17.7.4.17).
void StyleList::keepOneDefault() {
  std::set<std::string, std::less<>> types;
  for (auto style = styles_.rbegin(); style != styles_.rend(); ++style) {
    const bool isLast = isDefault(*style) && types.emplace(typeOf(*style)).second;
    if (isLast) {
      style->setAttribute("w:default", "1");
    } else {
      style->removeAttribute("w:default");
    }
  }
}

void StyleList::mendReferences() {
  std::map<std::string_view, const XmlElement*> known;
  for (const XmlElement& style : styles_) {
    known.emplace(idOf(style), &style);
  }
  const auto target = [&known](const XmlElement& style, std::string_view child) {
    const auto found = known.find(style.childValue(child));
    return found == known.end() ? nullptr : found->second;
  };
  for (XmlElement& style : styles_) {
    mendReference(style, "w:basedOn", target(style, "w:basedOn"), typeOf(style));
    mendReference(style, "w:next", target(style, "w:next"), "paragraph");
    mendReference(style, "w:link", target(style, "w:link"), typeOf(style) == "character" ? "paragraph" : "character");
  }
}

// Each style is looked at once: a chain ends at one whose own chain is known to end.
void StyleList::breakCircles() {
  std::map<std::string_view, XmlElement*> known;
  for (XmlElement& style : styles_) {
    known.emplace(idOf(style), &style);
  }
  std::set<const XmlElement*> ending;
  for (XmlElement& first : styles_) {
    std::set<const XmlElement*> chain;
    XmlElement* style = &first;
    while (ending.count(style) == 0 && chain.insert(style).second) {
      const auto base = known.find(style->childValue("w:basedOn"));
      if (base == known.end()) {
        break;
      }
      if (chain.count(base->second) > 0) {
        style->removeChildren("w:basedOn");
        break;
      }
      style = base->second;
    }
    ending.merge(chain);
  }
}

void StyleList::addNames() {
  for (std::size_t i = 0; i < styles_.size(); ++i) {
    const XmlElement& style = styles_[i];
    const std::string type(typeOf(style));
    if (isDefault(style) && type != "table") {
      continue;
    }
    names_.emplace(std::pair(type, asciiLowered(nameOf(style))), i);
    for (std::string& alias : namesIn(style.childValue("w:aliases"))) {
      aliases_.emplace(std::pair(type, std::move(alias)), i);
    }
  }
}

void StyleList::setIds(const std::vector<std::string>& ids) {
  ids_.clear();
  for (std::size_t i = 0; i < styles_.size(); ++i) {
    styles_[i].setAttribute("w:styleId", ids[i]);
    ids_.emplace(ids[i], i);
  }
}

void StyleList::add(XmlElement style) {
  ids_.emplace(idOf(style), styles_.size());
  styles_.push_back(std::move(style));
}

const XmlElement* StyleList::findIn(const Names& names, std::string_view type, std::string_view name) const {
  const auto found = names.find({std::string(type), asciiLowered(name)});
  return found == names.end() ? nullptr : &styles_[found->second];
}

const XmlElement* StyleList::findNamed(std::string_view type, std::string_view name) const {
  return findIn(names_, type, name);
}

const XmlElement* StyleList::findAlias(std::string_view type, std::string_view name) const {
  return findIn(aliases_, type, name);
}

const XmlElement* StyleList::find(std::string_view id) const {
  const auto found = ids_.find(id);
  return found == ids_.end() ? nullptr : &styles_[found->second];
}

XmlElement* StyleList::find(std::string_view id) {
  return const_cast<XmlElement*>(static_cast<const StyleList&>(*this).find(id));
}

std::vector<const XmlElement*> StyleList::basesOf(const XmlElement& style) const {
  std::vector<const XmlElement*> bases;
  for (const XmlElement* one = &style; one != nullptr && bases.size() < kMostBases;
       one = find(one->childValue("w:basedOn"))) {
    bases.push_back(one);
  }
  return bases;
}

const XmlElement* StyleList::defaults(std::string_view properties) const {
  for (const XmlElement& element : before_) {
    if (element.name == "w:docDefaults") {
      const XmlElement* const all = element.child(properties == "w:pPr" ? "w:pPrDefault" : "w:rPrDefault");
      return all == nullptr ? nullptr : all->child(properties);
    }
  }
  return nullptr;
}

std::vector<const XmlElement*> StyleList::propertiesOf(const XmlElement& style, std::string_view properties) const {
  std::vector<const XmlElement*> found;
  for (const XmlElement* const base : basesOf(style)) {
    found.push_back(base->child(properties));
  }
  found.push_back(defaults(properties));
  std::erase(found, nullptr);
  return found;
}

const XmlElement* StyleList::inherited(const XmlElement& style, std::string_view properties,
                                       std::string_view name) const {
  for (const XmlElement* const one : propertiesOf(style, properties)) {
    if (const XmlElement* const element = one->child(name)) {
      return element;
    }
  }
  return nullptr;
}

bool StyleList::wasNumbered(const XmlElement& style) const { return numbered_.count(idOf(style)) > 0; }

bool StyleList::saysNoNumber(const XmlElement& style) { return numberOf(style) == "0"; }

}  // namespace scrivalen::document::docx
