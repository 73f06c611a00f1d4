#include "formats/docx/reference/style_merge.h"

#include "formats/docx/reference/quote_looks.h"
#include "formats/docx/reference/schema.h"
#include "formats/docx/xml.h"
#include "text/ascii.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace scrivalen::document::docx {
namespace {

// A style that has a look, and one below it, by whose name converters know what it is of.
struct NamedBase {
  std::string_view style;
  std::string_view base;
  bool isLook;  // whether the look of a reference for the base is enough
};

constexpr NamedBase kNamedBases[] = {
    {"Code", "SourceCode", true}, {"InlineCode", "VerbatimChar", true}, {"ListCompact", "Compact", false}};

// What styles of ours that have space of their own must not get from a default style with an indent or space.
constexpr std::string_view kBareStyles[] = {"TableText",      "TableSpace", "SectionEnd", "Header",
                                            "HorizontalLine", "Footer",     "SourceCode"};

class Merger {
 public:
  Merger(StyleList& reference, const StyleList& own) : reference_(reference), own_(own) {}

  std::vector<MissedNumber> run() {
    match();
    std::vector<MissedNumber> missed = missedNumbers();
    rename();
    adapt();
    addMissing();
    return missed;
  }

 private:
  using Pair = std::pair<const XmlElement*, std::size_t>;  // of ours and the number of the reference's

  void match();
  bool isOursByName(const XmlElement& style) const;
  void pair(const XmlElement& own, const XmlElement* other);
  std::vector<MissedNumber> missedNumbers() const;
  const XmlElement* missedNumber(const XmlElement& own) const;
  void rename();
  void adapt();
  void setTabs(XmlElement& style, const XmlElement& ownTabs);
  void addMissing();
  void takeLookOfBase(XmlElement& style) const;
  bool putBelow(XmlElement& base);
  void makeBare(XmlElement& style) const;
  std::string freeName(std::string_view name) const;
  bool isPaired(const XmlElement& own) const;
  bool isPaired(std::string_view ownId) const;

  StyleList& reference_;
  const StyleList& own_;
  std::vector<Pair> pairs_;
  std::set<const XmlElement*> taken_;  // of the reference
};

void Merger::pair(const XmlElement& own, const XmlElement* other) {
  if (other != nullptr && taken_.insert(other).second) {
    pairs_.emplace_back(&own, static_cast<std::size_t>(other - reference_.styles().data()));
  }
}

// Every table of ours has a style, so the default one may be that.
bool Merger::isOursByName(const XmlElement& style) const {
  return typeOf(style) == "table" && own_.findNamed("table", nameOf(style)) != nullptr;
}

// A paragraph without a style has the default one, whatever its name.
void Merger::match() {
  for (const XmlElement& own : own_.styles()) {
    if (isDefault(own)) {
      const auto& styles = std::as_const(reference_).styles();
      const auto found = std::find_if(styles.begin(), styles.end(), [&](const XmlElement& style) {
        return isDefault(style) && typeOf(style) == typeOf(own) && !isOursByName(style);
      });
      pair(own, found == styles.end() ? nullptr : &*found);
    }
  }
  for (const XmlElement& own : own_.styles()) {
    if (!isPaired(own)) {
      pair(own, reference_.findNamed(typeOf(own), nameOf(own)));
    }
  }
}

bool Merger::isPaired(const XmlElement& own) const {
  return std::any_of(pairs_.begin(), pairs_.end(), [&](const Pair& one) { return one.first == &own; });
}

bool Merger::isPaired(std::string_view ownId) const {
  return std::any_of(pairs_.begin(), pairs_.end(), [&](const Pair& one) { return idOf(*one.first) == ownId; });
}

std::vector<MissedNumber> Merger::missedNumbers() const {
  std::vector<MissedNumber> missed;
  for (const XmlElement& own : own_.styles()) {
    if (const XmlElement* const source = missedNumber(own)) {
      missed.push_back({std::string(idOf(own)), std::string(nameOf(*source))});
    }
  }
  return missed;
}

// The style of the reference that gave a number to paragraphs of one of ours, which is based on it or is taken from it.
const XmlElement* Merger::missedNumber(const XmlElement& own) const {
  for (const XmlElement* const ownBase : own_.basesOf(own)) {
    const auto paired =
        std::find_if(pairs_.begin(), pairs_.end(), [&](const Pair& one) { return one.first == ownBase; });
    if (paired != pairs_.end()) {
      for (const XmlElement* const base : reference_.basesOf(reference_.styles()[paired->second])) {
        if (reference_.wasNumbered(*base) || StyleList::saysNoNumber(*base)) {
          return StyleList::saysNoNumber(*base) ? nullptr : base;
        }
      }
      return nullptr;
    }
    if (StyleList::saysNoNumber(*ownBase)) {
      return nullptr;
    }
  }
  return nullptr;
}

// Ids that differ only in the case of letters are different, but not to every reader.
void Merger::rename() {
  std::set<std::string> ids;
  for (const XmlElement& own : own_.styles()) {
    ids.insert(asciiLowered(idOf(own)));
  }
  auto& styles = reference_.styles();
  std::vector<std::string> renamed(styles.size());
  for (const auto& [own, number] : pairs_) {
    renamed[number] = idOf(*own);
  }
  std::map<std::string, std::string, std::less<>> newIds;
  std::map<std::string, int> numbers;  // that ids got last
  for (std::size_t i = 0; i < styles.size(); ++i) {
    const std::string_view id = idOf(styles[i]);
    int& number = numbers[asciiLowered(id)];
    while (renamed[i].empty()) {
      ++number;
      const std::string candidate = number == 1 ? std::string(id) : joined({id, "-", std::to_string(number)});
      renamed[i] = ids.insert(asciiLowered(std::string_view(candidate))).second ? candidate : std::string();
    }
    newIds.emplace(id, renamed[i]);
  }
  for (std::size_t i = 0; i < styles.size(); ++i) {
    styles[i].setAttribute("w:styleId", renamed[i]);
    for (const std::string_view name : {"w:basedOn", "w:next", "w:link"}) {
      if (XmlElement* const child = styles[i].child(name)) {
        child->setAttribute("w:val", newIds.find(child->attribute("w:val"))->second);
      }
    }
  }
}

// Names that Word knows have the case that it writes, because not every reader ignores it.
void Merger::adapt() {
  for (const auto& [own, number] : pairs_) {
    XmlElement& style = reference_.styles()[number];
    if (equalIgnoringCase(nameOf(style), nameOf(*own))) {
      style.child("w:name")->setAttribute("w:val", nameOf(*own));
    }
    if (isDefault(*own)) {
      style.setAttribute("w:default", "1");
    } else {
      style.removeAttribute("w:default");
    }
    const XmlElement* const properties = own->child("w:pPr");
    if (properties == nullptr) {
      continue;
    }
    if (const XmlElement* const tabs = properties->child("w:tabs")) {
      setTabs(style, *tabs);
    }
    for (const std::string_view name : {"w:numPr", "w:outlineLvl"}) {
      if (const XmlElement* const property = properties->child(name)) {
        childInOrder(childInOrder(style, "w:pPr"), name) = *property;
      }
    }
  }
}

// The reference keeps what leads to a tab on the right, such as dots. Tabs of the styles below it do not apply.
void Merger::setTabs(XmlElement& style, const XmlElement& ownTabs) {
  XmlElement tabs = ownTabs;
  const XmlElement* right = nullptr;
  std::vector<XmlElement> cleared;
  for (const XmlElement* base : reference_.basesOf(style)) {
    const XmlElement* const properties = base->child("w:pPr");
    const XmlElement* const theirs = properties == nullptr ? nullptr : properties->child("w:tabs");
    for (std::size_t i = 0; theirs != nullptr && i < theirs->children.size(); ++i) {
      const XmlElement& tab = theirs->children[i];
      const std::string_view kind = tab.attribute("w:val");
      right = right == nullptr && (kind == "right" || kind == "end") ? &tab : right;
      if (base != &style && kind != "clear" && !tab.attribute("w:pos").empty()) {
        cleared.push_back({"w:tab", {{"w:val", "clear"}, {"w:pos", std::string(tab.attribute("w:pos"))}}});
      }
    }
  }
  for (XmlElement& tab : tabs.children) {
    if (right != nullptr && !tab.attribute("w:leader").empty()) {
      const std::string_view leader = right->attribute("w:leader");
      tab.setAttribute("w:leader", leader.empty() ? "none" : leader);
    }
    std::erase_if(cleared, [&](const XmlElement& one) { return one.attribute("w:pos") == tab.attribute("w:pos"); });
  }
  tabs.children.insert(tabs.children.begin(), cleared.begin(), cleared.end());
  childInOrder(childInOrder(style, "w:pPr"), "w:tabs") = std::move(tabs);
}

// The font of the setting is in our default style.
void Merger::addMissing() {
  const XmlElement* const quote = isPaired("Quote") ? reference_.find("Quote") : nullptr;
  const QuoteLook look = quote == nullptr ? QuoteLook() : QuoteLook(reference_, *quote);
  std::vector<XmlElement> added;
  for (const XmlElement& own : own_.styles()) {
    if (isPaired(own)) {
      continue;
    }
    XmlElement style = own;
    style.child("w:name")->setAttribute("w:val", freeName(nameOf(own)));
    if (isDefault(own)) {
      style.removeChildren("w:rPr");
    }
    takeLookOfBase(style);
    if (!putBelow(style)) {
      makeBare(style);
    }
    look.apply(style);
    added.push_back(std::move(style));
  }
  auto& styles = reference_.styles();
  styles.insert(styles.end(), std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
}

// pandoc follows styles of characters only through those with properties.
void Merger::takeLookOfBase(XmlElement& style) const {
  for (const NamedBase& named : kNamedBases) {
    if (named.isLook && idOf(style) == named.style && isPaired(named.base)) {
      style.removeChildren("w:pPr");
      style.removeChildren("w:rPr");
      childInOrder(childInOrder(style, "w:rPr"), "w:noProof");
    }
  }
}

// A base of ours has no look, so it can be put below a style of the reference.
bool Merger::putBelow(XmlElement& base) {
  for (const NamedBase& named : kNamedBases) {
    const bool isBelow = idOf(base) == named.base && isPaired(named.style);
    XmlElement* const style = isBelow ? reference_.find(named.style) : nullptr;
    if (style == nullptr) {
      continue;
    }
    const std::string below(style->childValue("w:basedOn"));
    childInOrder(*style, "w:basedOn").setAttribute("w:val", idOf(base));
    base.removeChildren("w:basedOn");
    if (!below.empty()) {
      childInOrder(base, "w:basedOn").setAttribute("w:val", below);
    }
    if (named.isLook) {
      childInOrder(childInOrder(*style, "w:rPr"), "w:noProof");
    }
    return true;
  }
  return false;
}

void Merger::makeBare(XmlElement& style) const {
  const bool isBare = std::find(std::begin(kBareStyles), std::end(kBareStyles), idOf(style)) != std::end(kBareStyles);
  const XmlElement* const below = isBare ? std::as_const(reference_).find(style.childValue("w:basedOn")) : nullptr;
  if (below == nullptr) {
    return;
  }
  const XmlElement* const spacing = reference_.inherited(*below, {"w:pPr", "w:spacing"});
  if (spacing != nullptr && !spacing->attribute("w:before").empty()) {
    XmlElement& own = childInOrder(childInOrder(style, "w:pPr"), "w:spacing");
    own.setAttribute("w:before", own.attribute("w:before").empty() ? "0" : own.attribute("w:before"));
  }
  XmlElement* const properties = style.child("w:pPr");
  const bool hasIndent = properties != nullptr && properties->child("w:ind") != nullptr;
  if (!hasIndent && reference_.inherited(*below, {"w:pPr", "w:ind"}) != nullptr) {
    childInOrder(childInOrder(style, "w:pPr"), "w:ind").attributes = {
        {"w:left", "0"}, {"w:right", "0"}, {"w:firstLine", "0"}};
  }
  if (idOf(style) == "TableText" && reference_.inherited(*below, {"w:pPr", "w:jc"}) != nullptr) {
    childInOrder(childInOrder(style, "w:pPr"), "w:jc").setAttribute("w:val", "left");
  }
}

// A style of another type may have the name.
std::string Merger::freeName(std::string_view name) const {
  std::string result(name);
  const auto& styles = std::as_const(reference_).styles();
  for (int number = 2;
       std::any_of(styles.begin(), styles.end(),
                   [&](const XmlElement& style) { return equalIgnoringCase(nameOf(style), std::string_view(result)); });
       ++number) {
    result.assign(name).append(" ").append(std::to_string(number));
  }
  return result;
}

}  // namespace

StyleMerge mergedStyles(StyleList reference, const StyleList& own) {
  StyleMerge result{std::move(reference), {}};
  result.missed = Merger(result.styles, own).run();
  return result;
}

}  // namespace scrivalen::document::docx
