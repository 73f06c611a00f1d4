#pragma once

#include "formats/pdf/objects/file_on_disk.h"

#include <memory>

namespace scrivalen::test {

/// Adds an entry to the outline.
inline PDFStuffer::CPDFOutLine& addOutlineEntry(PDFStuffer::CPDFFile& pdf, const char16_t* title,
                                                const PDFStuffer::CPDFPage* target) {
  auto& entry = pdf.AddObject(std::make_unique<PDFStuffer::CPDFOutLine>(pdf.nextObjectNumber));
  entry.title = std::make_unique<std::u16string>(title);
  entry.destination.target = target;
  return entry;
}

/// Two pages (object 4 with its content 5, and 6) in one font (3), with a link (8) on the first to the second, and an
/// outline (9) of the entries 10, 11 below it, and 12.
inline void fillSample(PDFStuffer::CPDFFile& pdf) {
  const auto* const font = pdf.AddStandardFont(u"F1", PDF_TIMES_ROMAN);
  auto* const first = pdf.AddPage(u"");
  auto* const second = pdf.AddPage(u"");
  for (auto* const page : {first, second}) {
    page->AddFont(*font);
    page->content().data.Append(page == first ? "(one) Tj\r\n" : "(two) Tj\r\n");
  }
  auto* const link = pdf.AddAnnotation();
  link->destination.target = second;
  first->AddAnnotation(*link);
  pdf.CreateOutlines();
  auto& one = addOutlineEntry(pdf, u"One", first);
  one.linkBelow(*pdf.outlines, *pdf.outlines);
  addOutlineEntry(pdf, u"One a", first).linkBelow(one, *pdf.outlines);
  addOutlineEntry(pdf, u"Two", second).linkBelow(*pdf.outlines, *pdf.outlines);
}

}  // namespace scrivalen::test
