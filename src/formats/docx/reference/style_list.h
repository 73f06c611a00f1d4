#pragma once

#include "formats/docx/reference/xml_element.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::document::docx {

/// The styles of a part "w:styles". Each has an id that no other has, a name that no other of its type has, and a type;
/// those that it refers to are there. Languages and directions are removed, and numbering, unless it says that there is
/// none.
class StyleList {
 public:
  /// Raises ArchiveError when there are more than 10,000 styles.
  /// @param root  "w:styles"
  explicit StyleList(XmlElement root);

  /// The elements before the styles: defaults, and what a word processor shows of styles that are not there.
  const std::vector<XmlElement>& before() const { return before_; }
  std::vector<XmlElement>& before() { return before_; }
  const std::vector<XmlElement>& styles() const { return styles_; }
  /// A style to change. Its id stays.
  XmlElement& style(std::size_t number) { return styles_[number]; }
  /// Gives each style the id of the same number, which no other has.
  void setIds(const std::vector<std::string>& ids);
  /// Adds a style with an id that no other has.
  void add(XmlElement style);

  /// The style of a type with this name, whatever its case; null without one. The default style of the type is none of
  /// these, unless it is of tables.
  const XmlElement* findNamed(std::string_view type, std::string_view name) const;
  /// The same for one of its aliases.
  const XmlElement* findAlias(std::string_view type, std::string_view name) const;
  /// The style of an id; null for an empty one.
  const XmlElement* find(std::string_view id) const;
  XmlElement* find(std::string_view id);
  /// A style, that which it is based on, and so on, at most 100 together.
  std::vector<const XmlElement*> basesOf(const XmlElement& style) const;
  /// The properties "w:pPr" or "w:rPr" of a style, of those that it is based on, and of all text, in this order.
  std::vector<const XmlElement*> propertiesOf(const XmlElement& style, std::string_view properties) const;
  /// The first of an element in these; null without one.
  const XmlElement* inherited(const XmlElement& style, std::string_view properties, std::string_view name) const;
  /// Whether paragraphs of a style had a number or bullet before numbering was removed, for what the style itself says.
  bool wasNumbered(const XmlElement& style) const;
  /// Whether a style itself says that its paragraphs have none, whatever those that it is based on say.
  static bool saysNoNumber(const XmlElement& style);

 private:
  using Names = std::map<std::pair<std::string, std::string>, std::size_t>;  // types and names in lower case

  void takeStyle(XmlElement style);
  void removeDuplicates();
  void keepOneDefault();
  void mendReferences();
  void breakCircles();
  void addNames();
  const XmlElement* findIn(const Names& names, std::string_view type, std::string_view name) const;
  const XmlElement* defaults(std::string_view properties) const;

  std::vector<XmlElement> before_;
  std::vector<XmlElement> styles_;
  std::map<std::string, std::size_t, std::less<>> ids_;
  Names names_;
  Names aliases_;
  std::set<std::string, std::less<>> numbered_;  // ids
};

std::string_view idOf(const XmlElement& style);
std::string_view typeOf(const XmlElement& style);
std::string_view nameOf(const XmlElement& style);
bool isDefault(const XmlElement& style);

}  // namespace scrivalen::document::docx
