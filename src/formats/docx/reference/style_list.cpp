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

// @param names  with commas between them
bool hasName(std::string_view names, std::string_view name) {
  while (!names.empty()) {
    std::string_view one = names.substr(0, names.find(','));
    names.remove_prefix(std::min(one.size() + 1, names.size()));
    one.remove_prefix(std::min(one.find_first_not_of(' '), one.size()));
    if (equalIgnoringCase(one, name)) {
      return true;
    }
  }
  return false;
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

const XmlElement* StyleList::findNamed(std::string_view type, std::string_view name) const {
  const auto isOther = [&](const XmlElement& style) {
    return typeOf(style) != type || (isDefault(style) && type != "table");
  };
  for (const XmlElement& style : styles_) {
    if (!isOther(style) && equalIgnoringCase(nameOf(style), name)) {
      return &style;
    }
  }
  const auto found = std::find_if(styles_.begin(), styles_.end(), [&](const XmlElement& style) {
    return !isOther(style) && hasName(style.childValue("w:aliases"), name);
  });
  return found == styles_.end() ? nullptr : &*found;
}

const XmlElement* StyleList::find(std::string_view id) const {
  const auto found =
      std::find_if(styles_.begin(), styles_.end(), [id](const XmlElement& one) { return idOf(one) == id; });
  return id.empty() || found == styles_.end() ? nullptr : &*found;
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

const XmlElement* StyleList::inherited(const XmlElement& style, const std::vector<std::string_view>& path) const {
  for (const XmlElement* element : basesOf(style)) {
    for (const std::string_view name : path) {
      element = element == nullptr ? nullptr : element->child(name);
    }
    if (element != nullptr) {
      return element;
    }
  }
  return nullptr;
}

bool StyleList::wasNumbered(const XmlElement& style) const { return numbered_.count(idOf(style)) > 0; }

bool StyleList::saysNoNumber(const XmlElement& style) { return numberOf(style) == "0"; }

}  // namespace scrivalen::document::docx
