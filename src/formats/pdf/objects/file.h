#pragma once

#include "formats/pdf/objects/annotation.h"
#include "formats/pdf/objects/font.h"
#include "formats/pdf/objects/outline.h"
#include "formats/pdf/objects/page.h"
#include "output/failure_reason.h"
#include "output/output_buffer.h"
#include "system/files/files.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace PDFStuffer {

/// The paper of a document, in points.
struct MediaBox {
  std::int32_t left = 0, bottom = 0, right = 0, top = 0;
};

/// The root of a document (PDF 1.4, 3.6.1).
class CPDFCatalog final : public CPDFDictionary {
 public:
  explicit CPDFCatalog(std::uint32_t& nextObjectNumber);
  void Write(CPDFMemBlock& out) override;

  CPDFPages* pages = nullptr;
  std::optional<std::u16string> pageMode;
  CPDFOutLines* outlines = nullptr;
  bool hasOutlines = false;
};

using ObjectRegistry = std::vector<std::unique_ptr<CPDFObject>>;

/// The cross-reference table (PDF 1.4, 3.4.3), which lists the offset of each object. Its fileOffset is the offset of
/// the table itself.
class CPDFXRefs final : public CPDFObject {
 public:
  void Write(CPDFMemBlock& out) override;

  const ObjectRegistry* objects = nullptr;
};

/// The document information dictionary (PDF 1.4, 9.2.1).
class CPDFInfo final : public CPDFDictionary {
 public:
  explicit CPDFInfo(std::uint32_t& nextObjectNumber) { objectNumber = nextObjectNumber++; }
};

/// The trailer after the cross-reference table (PDF 1.4, 3.4.4).
class CPDFTrailer final : public CPDFDictionary {
 public:
  void Write(CPDFMemBlock& out) override;

  const CPDFXRefs* xrefs = nullptr;
  const CPDFCatalog* root = nullptr;
  const CPDFInfo* info = nullptr;
};

/// A font of the file and its resource name on pages.
struct FontRecord {
  std::uint32_t objectNumber = 0;
  std::uint32_t generation = 0;
  std::u16string name;
  CPDFStandardFont* font = nullptr;
};

/// A PDF file. It numbers the objects, owns them, and writes them in order, followed by the cross-reference table.
///
/// An object takes its number when it is created and its place in the table when it is registered, so register each one
/// before creating the next. After std::bad_alloc the file is unusable.
class CPDFFile {
 public:
  /// @param file  open for writing; closed only if callerOwnsHandle is cleared; must outlive this object
  CPDFFile(scrivalen::NativeFile file, Form form);
  /// @param output  receives the bytes instead of a handle, and reports its own errors; not owned; must outlive this
  /// object
  CPDFFile(scrivalen::OutputBuffer& output, Form form);
  CPDFFile(const CPDFFile&) = delete;
  CPDFFile& operator=(const CPDFFile&) = delete;
  virtual ~CPDFFile();

  /// Registers an object, which the file then owns.
  template <typename Object>
  Object& AddObject(std::unique_ptr<Object> object) {
    Object& added = *object;
    objects.push_back(std::move(object));
    return added;
  }

  /// Creates an object with the next number and registers it.
  template <typename Object>
  Object& make() {
    return AddObject(std::make_unique<Object>(nextObjectNumber));
  }

  CPDFPage* AddPage(std::u16string name);
  CPDFAnnot* AddAnnotation();
  void CreateOutlines();
  CPDFStandardFont* AddStandardFont(std::u16string name, PDF_STANDARD_FONT_FACE face);
  /// @param mode  null removes the mode
  void SetPageMode(const std::u16string* mode);
  /// Adds an information dictionary with the document's title.
  void setTitle(std::u16string title);

  /// Writes the file. @return false, with nothing written, if the handle is the invalid one
  bool Save();

  /// Save in steps, so that content can be made just before it is written. beginSave writes the header; saveThrough the
  /// objects up to and including a registered stream, with the given content; endSave the remaining objects, the table
  /// and the trailer.
  bool beginSave();
  void saveThrough(CPDFStream& stream, std::string_view content);
  void endSave();

  /// Whether bytes were lost, as on a full disk; no more reach the file then.
  bool hasLostBytes() const { return output_.hasLostBytes(); }

  /// The first reason why the file is incomplete; empty when every object was made and written, and the table can
  /// address it.
  std::wstring_view writeError() const { return reason_.text(); }

  std::u16string header = u"%PDF-1.4\n";
  std::u16string markComment = u"%\u00E2\u00E3\u00CF\u00D3\n";
  scrivalen::NativeFile handle;
  bool callerOwnsHandle = true;
  std::uint32_t nextObjectNumber = 1;
  MediaBox mediaBox;
  ObjectRegistry objects;
  CPDFCatalog* catalog = nullptr;
  CPDFPages* pages = nullptr;
  std::unique_ptr<CPDFXRefs> xrefs;
  std::unique_ptr<CPDFTrailer> trailer;
  std::vector<FontRecord> fonts;
  CPDFOutLines* outlines = nullptr;

 private:
  struct HandleOutput final : scrivalen::ByteSink {
    explicit HandleOutput(scrivalen::Reason& whyNot) : reason(whyNot) {}
    bool take(const char* data, std::size_t size) override;
    scrivalen::NativeFile handle = nullptr;
    scrivalen::Reason& reason;
    scrivalen::OutputBuffer buffer{*this};
  };

  void makeRoots();
  void WriteText(std::u16string_view text);
  CPDFObject& beginNextObject();
  void begin(CPDFObject& object);
  template <typename Write>
  void writePart(Write write);
  void writeObject(CPDFObject& object);
  std::uint64_t position() const { return start_ + output_.position(); }

  CPDFMemBlock block_;  // holds one object at a time; its memory is reused
  scrivalen::Reason reason_;
  std::unique_ptr<HandleOutput> handleOutput_;
  scrivalen::OutputBuffer& output_;
  std::uint64_t start_ = 0;
  std::size_t written_ = 0;  // number of objects written
};

}  // namespace PDFStuffer
