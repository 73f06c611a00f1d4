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

/// A name that items link to. The items belong to the document.
struct CPDFlink {
  std::u16string name;
  std::vector<CPDFitem*> sources;
  CPDFitem* target = nullptr;
};

/// The links of a document, in the order in which their names first appeared.
class LinkTable {
 public:
  /// The link of this name, which is made when there is none.
  CPDFlink& named(std::u16string_view name);

  const std::vector<CPDFlink>& entries() const { return links_; }
  void clear();

 private:
  std::vector<CPDFlink> links_;
  std::unordered_map<std::u16string, std::size_t> byName_;
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
  /// @param target  where it leads; null: nowhere
  void addAnnotation(const CPDFitem* source, const CPDFitem* target);
  /// @param title  null: none
  void addOutlineEntry(std::unique_ptr<std::u16string> title, const OutlinePlace& place, const CPDFitem* target);
  /// Puts the entries together when all of them are there.
  void finishOutline();

 private:
  struct OutlineEntry {
    OutlinePlace place;
    PDFStuffer::CPDFOutLine* object;
  };

  const Placement* placementOf(const CPDFitem* item) const;
  PDFStuffer::CPDFAnnot& newAnnotation(PDFStuffer::CPDFPage& page, const Placement* target);
  void setRectangle(PDFStuffer::CPDFAnnot& annotation, const Placement& source, Points top, Points bottom) const;
  void link(PDFStuffer::CPDFOutLine& entry, std::size_t level);
  void countAllBelow();

  PDFStuffer::CPDFFile& file_;
  const Placements& placements_;
  Paper paper_;
  PDFStuffer::Form form_;
  // The outline, its last entry, that one's last entry, and so on.
  std::vector<PDFStuffer::OutlineNode*> lastOnes_;
  std::vector<OutlineEntry> outline_;
};

}  // namespace scrivalen::pdf
