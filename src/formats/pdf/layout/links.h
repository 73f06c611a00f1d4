#pragma once

#include "formats/pdf/layout/placement.h"
#include "formats/pdf/layout/units.h"
#include "formats/pdf/objects/file.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace scrivalen::pdf {

/// A link from items to a named item or to an address. The items belong to the document.
struct CPDFlink {
  std::vector<CPDFitem*> sources;
  CPDFitem* target = nullptr;
  std::u16string address;  // empty for a named item
};

/// The links of a document, in order of the first use of their names and addresses.
class LinkTable {
 public:
  /// Returns the link with this name, creating it if necessary.
  CPDFlink& named(std::u16string_view name);
  /// Returns the link to this address outside the document, creating it if necessary.
  CPDFlink& outside(std::u16string_view address);

  const std::vector<CPDFlink>& entries() const { return links_; }

 private:
  using Indexes = std::unordered_map<std::u16string, std::size_t>;

  CPDFlink& linkOf(Indexes& indexes, std::u16string_view key);

  std::vector<CPDFlink> links_;
  Indexes byName_;
  Indexes byAddress_;
};

/// The position of an outline entry: how many entries were added before it, and its level.
struct OutlinePlace {
  std::uint32_t order;
  int level;
};

/// Adds the links of a document to its pages and its outline when all pages are made.
class LinkWriter {
 public:
  LinkWriter(PDFStuffer::CPDFFile& file, const Placements& placements, const Paper& paper, PDFStuffer::Form form)
      : file_(file), placements_(placements), paper_(paper), form_(form) {}

  /// Adds an annotation on the source, or two if the source crosses a page break.
  void addAnnotation(const CPDFitem* source, const CPDFlink& link);
  /// @param title  null: no title
  void addOutlineEntry(std::unique_ptr<std::u16string> title, const OutlinePlace& place, const CPDFlink& link);
  /// Builds the outline tree when all entries are added.
  void finishOutline();

 private:
  struct OutlineEntry {
    OutlinePlace place;
    PDFStuffer::CPDFOutLine* object;
  };

  const Placement* placementOf(const CPDFitem* item) const;
  template <typename Source>
  void setTarget(Source& source, const CPDFlink& link) const;
  PDFStuffer::CPDFAnnot& newAnnotation(PDFStuffer::CPDFPage& page, const CPDFlink& link);
  void setRectangle(PDFStuffer::CPDFAnnot& annotation, const Placement& source, Points top, Points bottom) const;
  void attach(PDFStuffer::CPDFOutLine& entry, std::size_t level);
  void countAllBelow();

  PDFStuffer::CPDFFile& file_;
  const Placements& placements_;
  Paper paper_;
  PDFStuffer::Form form_;
  // The outline, its last child, the last child of that, and so on.
  std::vector<PDFStuffer::OutlineNode*> lastEntries_;
  std::vector<OutlineEntry> outline_;
};

}  // namespace scrivalen::pdf
