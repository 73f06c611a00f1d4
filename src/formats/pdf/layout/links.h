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

/// Where items link to: an item of a name, or an address. The items belong to the document.
struct CPDFlink {
  std::vector<CPDFitem*> sources;
  CPDFitem* target = nullptr;
  std::u16string address;  // empty where there is a name
};

/// The links of a document, in the order in which their names and addresses first appeared.
class LinkTable {
 public:
  /// The link of this name, which is made when there is none.
  CPDFlink& named(std::u16string_view name);
  /// The link out of the document to this address, which is made when there is none.
  CPDFlink& outside(std::u16string_view address);

  const std::vector<CPDFlink>& entries() const { return links_; }

 private:
  using Indexes = std::unordered_map<std::u16string, std::size_t>;

  CPDFlink& linkOf(Indexes& indexes, std::u16string_view key);

  std::vector<CPDFlink> links_;
  Indexes byName_;
  Indexes byAddress_;
};

/// Where an entry of the outline belongs: how many entries were added before it, and its level.
struct OutlinePlace {
  std::uint32_t order;
  int level;
};

/// Puts the links of a document, when all its pages are made, onto them and into the outline.
class LinkWriter {
 public:
  LinkWriter(PDFStuffer::CPDFFile& file, const Placements& placements, const Paper& paper, PDFStuffer::Form form)
      : file_(file), placements_(placements), paper_(paper), form_(form) {}

  /// An annotation where the source stands, two when it goes over a page break.
  void addAnnotation(const CPDFitem* source, const CPDFlink& link);
  /// @param title  null: none
  void addOutlineEntry(std::unique_ptr<std::u16string> title, const OutlinePlace& place, const CPDFlink& link);
  /// Puts the entries together when all of them are there.
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
  // The outline, its last entry, that one's last entry, and so on.
  std::vector<PDFStuffer::OutlineNode*> lastEntries_;
  std::vector<OutlineEntry> outline_;
};

}  // namespace scrivalen::pdf
