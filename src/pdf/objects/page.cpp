#include "pdf/objects/page.h"

#include "pdf/objects/file.h"
#include "pdf/objects/values.h"
#include "platform/host.h"

namespace PDFStuffer {

CPDFPages::CPDFPages(std::uint32_t& nextObjectNumber) {
  objectNumber = nextObjectNumber++;
  addName(u"Type", u"Pages");
}

void CPDFPages::Write(CPDFMemBlock& out) {
  addNumber(u"Count", static_cast<std::int32_t>(children.size()));
  auto& kids = add(u"Kids", std::make_unique<CPDFArray>());
  for (const CPDFObject* const page : children) {
    kids.Append(std::make_unique<CPDFIndirectRef>(page));
  }
  CPDFDictionary::Write(out);
}

CPDFPage::CPDFPage(std::uint32_t& nextObjectNumber) {
  objectNumber = nextObjectNumber++;
  ownContent_ = std::make_unique<CPDFStream>(nextObjectNumber);
  content_ = ownContent_.get();
  addName(u"Type", u"Page");
  addReference(u"Contents", content_);
  resources_ = &add(u"Resources", std::make_unique<CPDFDictionary>());
  auto& procedures = resources_->add(u"ProcSet", std::make_unique<CPDFArray>());
  for (const char16_t* const procedure : {u"PDF", u"Text", u"ImageB", u"ImageC", u"ImageI"}) {
    procedures.Append(std::make_unique<CPDFName>(procedure));
  }
}

void CPDFPage::AddFont(const CPDFFontBase& font) {
  if (!fonts_) {
    fonts_ = &resources_->add(u"Font", std::make_unique<CPDFDictionary>());
  }
  fonts_->addReference(font.resourceName().c_str(), &font);
}

void CPDFPage::AddAnnotation(const CPDFAnnot& annotation) {
  if (!annotations_) {
    annotations_ = &add(u"Annots", std::make_unique<CPDFArray>());
  }
  annotations_->Append(std::make_unique<CPDFIndirectRef>(&annotation));
}

void CPDFPage::Write(CPDFMemBlock& out) {
  addReference(u"Parent", parent);
  add(u"LastModified", std::make_unique<CPDFDate>(scrivalen::platform::currentTime()));
  if (owner) {
    const MediaBox& box = owner->mediaBox;
    add(u"MediaBox", std::make_unique<CPDFRect>(box.left, box.bottom, box.right, box.top));
  }
  CPDFDictionary::Write(out);
}

}  // namespace PDFStuffer
