#include "formats/pdf/objects/page.h"

#include "formats/pdf/objects/file.h"
#include "formats/pdf/objects/values.h"
#include "output/host_handlers.h"

namespace PDFStuffer {
namespace {

// Writes references to objects as an array without creating an object for each: a document may have a hundred thousand.
template <typename Object>
class References final : public CPDFObject {
 public:
  explicit References(const std::vector<Object*>& targets) : targets_(targets) {}

  void Write(CPDFMemBlock& out) override {
    out.Append("[");
    for (const CPDFObject* const target : targets_) {
      CPDFIndirectRef(target).Write(out);
      out.Append(" ");
    }
    out.Append("]\r\n");
  }

 private:
  const std::vector<Object*>& targets_;
};

}  // namespace

CPDFPages::CPDFPages(std::uint32_t& nextObjectNumber) {
  objectNumber = nextObjectNumber++;
  addName(u"Type", u"Pages");
}

void CPDFPages::Write(CPDFMemBlock& out) {
  addNumber(u"Count", static_cast<std::int32_t>(children.size()));
  add(u"Kids", std::make_unique<References<CPDFObject>>(children));
  CPDFDictionary::Write(out);
}

CPDFPage::CPDFPage(std::uint32_t& nextObjectNumber) {
  objectNumber = nextObjectNumber++;
  ownContent_ = std::make_unique<CPDFStream>(nextObjectNumber);
  content_ = ownContent_.get();
}

void CPDFPage::AddFont(const CPDFFontBase& font) { fonts_.push_back(&font); }

void CPDFPage::AddAnnotation(const CPDFAnnot& annotation) { annotations_.push_back(&annotation); }

void CPDFPage::addResources() {
  auto& resources = add(u"Resources", std::make_unique<CPDFDictionary>());
  auto& procedures = resources.add(u"ProcSet", std::make_unique<CPDFArray>());
  for (const char16_t* const procedure : {u"PDF", u"Text", u"ImageB", u"ImageC", u"ImageI"}) {
    procedures.Append(std::make_unique<CPDFName>(procedure));
  }
  if (!fonts_.empty()) {
    auto& listed = resources.add(u"Font", std::make_unique<CPDFDictionary>());
    for (const CPDFFontBase* const font : fonts_) {
      listed.addReference(font->resourceName().c_str(), font);
    }
  }
}

// The entries exist only while the page is written: for all pages together they would take more memory than everything
// else.
void CPDFPage::Write(CPDFMemBlock& out) {
  addName(u"Type", u"Page");
  addReference(u"Contents", content_);
  addResources();
  if (!annotations_.empty()) {
    add(u"Annots", std::make_unique<References<const CPDFAnnot>>(annotations_));
  }
  addReference(u"Parent", parent);
  add(u"LastModified", std::make_unique<CPDFDate>(scrivalen::currentTime()));
  if (owner) {
    const MediaBox& box = owner->mediaBox;
    add(u"MediaBox", std::make_unique<CPDFRect>(box.left, box.bottom, box.right, box.top));
  }
  CPDFDictionary::Write(out);
  entries = std::vector<CPDFDictionaryEntry>();
}

}  // namespace PDFStuffer
