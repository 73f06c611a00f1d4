#pragma once

#include "formats/pdf/typeset/pages/canvas.h"
#include "formats/pdf/typeset/structure/parent_tree.h"
#include "formats/pdf/typeset/structure/structure_tree.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::typeset {

/// Ties what pages show to the elements of the structure (PDF 1.7, 14.7.4): what is drawn is marked content of an
/// element, or an artifact.
class Tagger {
 public:
  /// @param file  not owned; must outlive this object
  explicit Tagger(PdfFile& file) : file_(file), tree_(file), parents_(file) {}

  StructureTree& tree() { return tree_; }
  Standard standard() const { return file_.standard(); }

  /// @param page    the number of its object
  /// @param canvas  not owned; has to be there until the page ends
  void beginPage(int page, Canvas& canvas);
  /// Begins what is no content of the document: header and footer, repeated rows, leaders.
  void showArtifact();
  /// Begins or continues the texts of an element.
  void show(Element& element);
  /// Begins a picture of an element.
  void beginImage(Element& element);
  /// Begins a form that is part of an element.
  void beginForm(Element& element);
  void endForm() { canvas_->endFormMark(); }
  void endImage() { canvas_->endImageMark(); }
  /// Reserves the key of an annotation that belongs to an element.
  std::int64_t newAnnotationKey(const Element& element);
  int page() const { return page_; }
  /// Ends the texts. @return the entries that the page has for its tags
  std::string endPage();

  /// Writes what is left of the structure. @return the number of its root
  int finish();

 private:
  static constexpr int kNothing = 0;
  static constexpr int kArtifact = -1;

  void endText();
  int mark(Element& element);
  void writeElements(std::string& object) const;

  PdfFile& file_;
  StructureTree tree_;
  ParentTree parents_;
  Canvas* canvas_ = nullptr;
  int page_ = 0;
  std::int64_t pageKey_ = 0;
  int shown_ = kNothing;                                   // the element whose texts are being drawn
  std::vector<int> elements_;                              // of the page's marked content
  std::vector<std::pair<std::int64_t, int>> annotations_;  // keys and elements
};

}  // namespace scrivalen::typeset
