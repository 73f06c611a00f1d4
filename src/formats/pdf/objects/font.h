#pragma once

#include "formats/pdf/objects/containers.h"
#include "scrivalen/pdf_doc.h"

#include <cstdint>
#include <memory>
#include <string>

namespace PDFStuffer {

/// A dictionary that pages list under its resource name.
class CPDFFontBase : public CPDFDictionary {
 public:
  void Write(CPDFMemBlock& out) override;
  virtual const std::u16string& resourceName() const { return name; }

  std::u16string name;
  /// The number of the object that maps codes to Unicode; 0: none.
  std::uint32_t toUnicode = 0;
};

/// A font dictionary (PDF 1.4, 5.5).
class CPDFFont : public CPDFFontBase {
 public:
  static constexpr std::uint32_t kNoChar = 0xFFFFFFFF;

  explicit CPDFFont(std::uint32_t& nextObjectNumber);
  void Write(CPDFMemBlock& out) override;

  std::u16string baseFont;
  /// An index into the subtypes of fonts: 1 is Type1.
  std::int32_t subtype = 0;
  std::uint32_t firstChar = kNoChar;
  std::uint32_t lastChar = kNoChar;
  /// Written once: the dictionary takes it over.
  std::unique_ptr<CPDFArray> widths;
  /// The number of the descriptor; 0: none.
  std::uint32_t fontDescriptor = 0;
  std::u16string encodingName;
  /// Written once, when there is no name: the dictionary takes it over.
  std::unique_ptr<CPDFObject> encoding;
};

/// Whether a font has signs of its own instead of letters, in an encoding of its own (PDF 1.4, 5.5.5).
bool isSymbolic(PDF_STANDARD_FONT_FACE face);

/// One of the fonts that every reader has (PDF 1.4, 5.5.1), and some that most have. The conforming form names the
/// former only, the one that looks like the face, and no encoding for one that is symbolic.
class CPDFStandardFont final : public CPDFFont {
 public:
  using CPDFFont::CPDFFont;
  void Write(CPDFMemBlock& out) override;

  PDF_STANDARD_FONT_FACE face = PDF_HELVETICA;
};

}  // namespace PDFStuffer
