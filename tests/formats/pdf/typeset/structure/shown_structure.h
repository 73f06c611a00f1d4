#pragma once

#include "formats/pdf/typeset/pdf_objects.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::test {

/// The tags of a PDF as a reader follows them. Whatever is wrong with them fails the test: content without a mark,
/// parents that do not know their kids, a tree that leads from content to another element.
class ShownStructure {
 public:
  explicit ShownStructure(const std::string& file);

  /// The elements with their kids in parentheses. A text is in quotes, "@" is the area of a link, "#" an image or form;
  /// attributes, languages and alternative texts are in brackets.
  const std::string& all() const { return all_; }
  /// The texts that are artifacts.
  const std::string& artifacts() const { return artifacts_; }
  const PdfObjects& objects() const { return objects_; }
  const PdfValue& catalog() const { return catalog_; }
  const std::vector<PdfValue>& pages() const { return pages_; }

 private:
  using Content = std::pair<int, int>;  // a page's number, and that of content there

  PdfValue value(int number) const { return pdfValueOf(objects_.object(number)); }
  PdfValue resolved(const PdfValue& value) const;
  void readPages(int node);
  void readContent(int page, const std::string& content);
  std::string shown(int element, int parent);
  std::string shownKid(const PdfValue& kid, int page, int element);
  std::string shownContent(const Content& content, int element);
  std::string attributesOf(const PdfValue& element) const;
  void readParents(const PdfValue& node);
  void checkParents();

  PdfObjects objects_;
  PdfValue catalog_;
  std::vector<PdfValue> pages_;
  std::vector<int> pageNumbers_;
  std::map<Content, std::string> texts_;
  std::map<Content, int> elements_;
  std::map<int, PdfValue> parents_;  // by their keys
  std::map<int, int> annotations_;   // by their keys, the elements that have them
  std::string artifacts_;
  std::string all_;
};

}  // namespace scrivalen::test
