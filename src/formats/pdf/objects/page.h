#pragma once

#include "formats/pdf/objects/annotation.h"
#include "formats/pdf/objects/font.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace PDFStuffer {

class CPDFFile;

/// The page tree node (PDF 1.4, 3.6.2) whose children are all pages.
class CPDFPages final : public CPDFDictionary {
 public:
  explicit CPDFPages(std::uint32_t& nextObjectNumber);
  void Write(CPDFMemBlock& out) override;
};

/// A page (PDF 1.4, 3.6.2). Its entries are created when it is written and deleted afterwards.
class CPDFPage final : public CPDFDictionary {
 public:
  /// Takes one number for itself and the next one for its content.
  explicit CPDFPage(std::uint32_t& nextObjectNumber);
  void Write(CPDFMemBlock& out) override;

  /// Lists a font in the page's resources.
  void AddFont(const CPDFFontBase& font);
  void AddAnnotation(const CPDFAnnot& annotation);
  /// Transfers the content to the caller, who must keep it as long as the page lives.
  std::unique_ptr<CPDFStream> takeContent() { return std::move(ownContent_); }
  CPDFStream& content() { return *content_; }

  /// The name passed to AddPage; not written.
  std::u16string name;
  CPDFPages* parent = nullptr;
  /// The file whose media box is written for the page.
  const CPDFFile* owner = nullptr;

 private:
  void addResources();

  std::unique_ptr<CPDFStream> ownContent_;
  CPDFStream* content_;
  std::vector<const CPDFFontBase*> fonts_;
  std::vector<const CPDFAnnot*> annotations_;
};

}  // namespace PDFStuffer
