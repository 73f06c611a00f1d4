#pragma once

#include "formats/pdf/objects/annotation.h"
#include "formats/pdf/objects/font.h"
#include "formats/pdf/objects/outline.h"
#include "formats/pdf/objects/page.h"
#include "output/output_buffer.h"
#include "output/reason.h"
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

/// The table of where each object begins (PDF 1.4, 3.4.3). Its own offset is that of the table.
class CPDFXRefs final : public CPDFObject {
 public:
  void Write(CPDFMemBlock& out) override;

  const ObjectRegistry* objects = nullptr;
};

/// What a document says of itself (PDF 1.4, 9.2.1).
class CPDFInfo final : public CPDFDictionary {
 public:
  explicit CPDFInfo(std::uint32_t& nextObjectNumber) { objectNumber = nextObjectNumber++; }
};

/// What stands behind the table (PDF 1.4, 3.4.4).
class CPDFTrailer final : public CPDFDictionary {
 public:
  void Write(CPDFMemBlock& out) override;

  const CPDFXRefs* xrefs = nullptr;
  const CPDFCatalog* root = nullptr;
  const CPDFInfo* info = nullptr;
};

/// A font of the file and the name under which pages list it.
struct FontRecord {
  std::uint32_t objectNumber = 0;
  std::uint32_t generation = 0;
  std::u16string name;
  CPDFStandardFont* font = nullptr;
};

/// A PDF file: it numbers the objects, owns them, and writes them in their order with the table that finds them.
///
/// An object takes its number when it is made and its place in the table when it is registered, so each is registered
/// before the next is made. What a call raises because memory runs out leaves the file in no state to go on.
class CPDFFile {
 public:
  /// @param file  open for writing; not closed unless callerOwnsHandle is cleared; must outlive this
  CPDFFile(scrivalen::NativeFile file, Form form);
  /// @param output  takes the bytes instead of a handle, and reports those it loses itself; not owned; must outlive
  /// this
  CPDFFile(scrivalen::OutputBuffer& output, Form form);
  CPDFFile(const CPDFFile&) = delete;
  CPDFFile& operator=(const CPDFFile&) = delete;
  virtual ~CPDFFile();

  /// Registers an object, which belongs to the file from now on.
  template <typename Object>
  Object& AddObject(std::unique_ptr<Object> object) {
    Object& added = *object;
    objects.push_back(std::move(object));
    return added;
  }

  /// Makes an object under the next number and registers it.
  template <typename Object>
  Object& make() {
    return AddObject(std::make_unique<Object>(nextObjectNumber));
  }

  CPDFPage* AddPage(std::u16string name);
  CPDFAnnot* AddAnnotation();
  void CreateOutlines();
  CPDFStandardFont* AddStandardFont(std::u16string name, PDF_STANDARD_FONT_FACE face);
  /// @param mode  null takes the mode away
  void SetPageMode(const std::u16string* mode);
  /// Lets the document say its title.
  void setTitle(std::u16string title);

  /// Writes the file. @return false when the handle is the invalid one; then nothing is written
  bool Save();

  /// Save in steps, so that content can be made just before it is written: the head; the objects not yet written, up to
  /// a registered stream, which gets this content; the rest, the table and the trailer.
  bool beginSave();
  void saveThrough(CPDFStream& stream, std::string_view content);
  void endSave();

  /// Whether everything is in the file: it was made, the handle has taken it, and the table finds it.
  bool isWhole() const { return reason_.empty(); }
  /// The first reason why not.
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

  CPDFMemBlock block_;  // one object at a time; its memory serves all
  scrivalen::Reason reason_;
  std::unique_ptr<HandleOutput> handleOutput_;
  scrivalen::OutputBuffer& output_;
  std::uint64_t start_ = 0;
  std::size_t written_ = 0;  // objects
};

}  // namespace PDFStuffer
