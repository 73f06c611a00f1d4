#pragma once

#include "formats/pdf/objects/containers.h"
#include "scrivalen/pdf_doc.h"

#include <cstdint>
#include <memory>
#include <string>

namespace PDFStuffer {

/// The base of fonts, which pages list by resource name.
class CPDFFontBase : public CPDFDictionary {
 public:
  void Write(CPDFMemBlock& out) override;
  virtual const std::u16string& resourceName() const { return name; }

  std::u16string name;
  /// The number of the object that maps codes to Unicode; 0 if there is none.
  std::uint32_t toUnicode = 0;
};

/// A font dictionary (PDF 1.4, 5.5).
class CPDFFont : public CPDFFontBase {
 public:
  static constexpr std::uint32_t kNoChar = 0xFFFFFFFF;

  explicit CPDFFont(std::uint32_t& nextObjectNumber);
  void Write(CPDFMemBlock& out) override;

  std::u16string baseFont;
  /// An index into the font subtypes; 1 is Type1.
  std::int32_t subtype = 0;
  std::uint32_t firstChar = kNoChar;
  std::uint32_t lastChar = kNoChar;
  /// Written once: Write moves it into the dictionary.
  std::unique_ptr<CPDFArray> widths;
  /// The number of the font descriptor; 0 if there is none.
  std::uint32_t fontDescriptor = 0;
  std::u16string encodingName;
  /// Written once, if there is no name: Write moves it into the dictionary.
  std::unique_ptr<CPDFObject> encoding;
};

/// Whether a font has symbols instead of letters, in its own encoding (PDF 1.4, 5.5.5).
bool isSymbolic(PDF_STANDARD_FONT_FACE face);

/// One of the 14 standard fonts, which every reader has (PDF 1.4, 5.5.1), or a common alias. The conforming form
/// replaces an alias by the matching standard font and gives a symbolic font no encoding.
class CPDFStandardFont final : public CPDFFont {
 public:
  using CPDFFont::CPDFFont;
  void Write(CPDFMemBlock& out) override;

  PDF_STANDARD_FONT_FACE face = PDF_HELVETICA;
};

}  // namespace PDFStuffer
