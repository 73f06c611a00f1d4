#include "formats/pdf/objects/file.h"

#include "formats/pdf/objects/piece.h"
#include "formats/pdf/objects/values.h"
#include "output/exception_barrier.h"
#include "system/messages.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

using namespace scrivalen;

namespace PDFStuffer {
namespace {

constexpr std::size_t kObjectsPerFlush = 50;
constexpr std::uint64_t kFreeGeneration = 65535;
constexpr std::uint64_t kMaxOffset = 9999999999;  // a line of the table has ten digits

// PDF 1.4, table 3.16.
constexpr std::u16string_view kPageModes[] = {u"UseNone", u"UseOutlines", u"UseThumbs", u"FullScreen"};

bool isPageMode(std::u16string_view mode) {
  return std::find(std::begin(kPageModes), std::end(kPageModes), mode) != std::end(kPageModes);
}

void keepSystemError(Reason& reason) {
  containedIn(reason, [&reason] { reason.keep(systemErrorText(lastSystemError())); });
}

bool isInvalid(NativeFile handle) { return reinterpret_cast<std::intptr_t>(handle) == -1; }

// PDF 1.4, 3.4.3: 20 bytes.
void appendLine(Piece& table, std::uint64_t offset, std::uint64_t generation, const char* use) {
  table.padded(offset, 10).text(" ").padded(generation, 5).text(" ").text(use).text("\r\n");
}

}  // namespace

CPDFCatalog::CPDFCatalog(std::uint32_t& nextObjectNumber) {
  objectNumber = nextObjectNumber++;
  addName(u"Type", u"Catalog");
}

void CPDFCatalog::Write(CPDFMemBlock& out) {
  children.push_back(pages);
  addReference(u"Pages", pages);
  // An outline without entries is left out; the classic form refers to it although the file does not contain it.
  if (hasOutlines && !(out.isConforming() && outlines && !outlines->first)) {
    addReference(u"Outlines", outlines);
  }
  if (pageMode && (isPageMode(*pageMode) || !out.isConforming())) {
    addName(u"PageMode", *pageMode);
  }
  CPDFDictionary::Write(out);
}

void CPDFXRefs::Write(CPDFMemBlock& out) {
  Piece table;
  table.text("xref\r\n0 ").number(objects->size() + 1).text("\r\n");
  appendLine(table, 0, kFreeGeneration, "f");
  for (const auto& object : *objects) {
    appendLine(table, object->fileOffset, object->generation, "n");
  }
  out.Append(table.view());
}

void CPDFTrailer::Write(CPDFMemBlock& out) {
  out.Append("trailer\r\n");
  const std::size_t registered = xrefs && xrefs->objects ? xrefs->objects->size() : 0;
  addNumber(u"Size", static_cast<std::int32_t>(registered + 1));
  addReference(u"Root", root);
  if (info) {
    addReference(u"Info", info);
  }
  CPDFMemBlock part(out.form());
  CPDFDictionary::Write(part);
  part.Append(Piece().text("startxref\r\n").number(xrefs ? xrefs->fileOffset : 0).text("\r\n").view());
  out.AppendBlock(part);
}

bool CPDFFile::HandleOutput::take(const char* data, std::size_t size) {
  if (writeAll(handle, data, size)) {
    return true;
  }
  keepSystemError(reason);
  return false;
}

CPDFFile::CPDFFile(NativeFile file, Form form)
    : handle(file),
      block_(form),
      handleOutput_(std::make_unique<HandleOutput>(reason_)),
      output_(handleOutput_->buffer) {
  makeRoots();
}

CPDFFile::CPDFFile(OutputBuffer& output, Form form) : handle(nullptr), block_(form), output_(output) { makeRoots(); }

void CPDFFile::makeRoots() {
  catalog = &make<CPDFCatalog>();
  pages = &make<CPDFPages>();
  xrefs = std::make_unique<CPDFXRefs>();
  trailer = std::make_unique<CPDFTrailer>();
}

CPDFFile::~CPDFFile() {
  if (!callerOwnsHandle && handle) {
    closeFile(handle);
  }
}

CPDFPage* CPDFFile::AddPage(std::u16string name) {
  CPDFPage& page = make<CPDFPage>();
  AddObject(page.takeContent());
  page.name = std::move(name);
  page.parent = pages;
  page.owner = this;
  pages->children.push_back(&page);
  return &page;
}

CPDFAnnot* CPDFFile::AddAnnotation() { return &make<CPDFAnnot>(); }

void CPDFFile::CreateOutlines() {
  outlines = &make<CPDFOutLines>();
  catalog->outlines = outlines;
  catalog->hasOutlines = true;
}

CPDFStandardFont* CPDFFile::AddStandardFont(std::u16string name, PDF_STANDARD_FONT_FACE face) {
  CPDFStandardFont& font = make<CPDFStandardFont>();
  font.name = std::move(name);
  font.face = face;
  fonts.push_back({font.objectNumber, font.generation, font.name, &font});
  return &font;
}

void CPDFFile::SetPageMode(const std::u16string* mode) {
  catalog->pageMode = mode ? std::optional<std::u16string>(*mode) : std::nullopt;
}

void CPDFFile::setTitle(std::u16string title) {
  CPDFInfo& info = make<CPDFInfo>();
  info.add(u"Title", std::make_unique<CPDFString>(std::move(title)));
  trailer->info = &info;
}

// The low byte of each code unit is written.
void CPDFFile::WriteText(std::u16string_view text) {
  for (const char16_t unit : text) {
    output_.put(static_cast<char>(unit & 0xFF));
  }
}

void CPDFFile::begin(CPDFObject& object) {
  object.fileOffset = position();
  if (object.fileOffset > kMaxOffset) {
    reason_.keep(L"A PDF cannot be larger than 10 gigabytes");
  }
}

CPDFObject& CPDFFile::beginNextObject() {
  if (written_ % kObjectsPerFlush == 0) {
    output_.flush();
  }
  CPDFObject& object = *objects[written_++];
  begin(object);
  return object;
}

// After another exception, only the rest of this object is lost; after bad_alloc, the rest of the file.
template <typename Write>
void CPDFFile::writePart(Write write) {
  block_.Rewind();
  try {
    write(block_);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    reason_.keep(L"An object could not be made");
  }
  if (!block_.isWhole()) {
    throw std::bad_alloc();
  }
  output_.write(block_.text().data(), block_.text().size());
}

void CPDFFile::writeObject(CPDFObject& object) {
  writePart([&object](CPDFMemBlock& out) { object.Write(out); });
}

bool CPDFFile::Save() {
  if (!beginSave()) {
    return false;
  }
  endSave();
  return true;
}

bool CPDFFile::beginSave() {
  reason_.clear();
  if (isInvalid(handle)) {
    reason_.keep(L"The file's handle is the invalid one");
    return false;
  }
  if (handleOutput_) {
    handleOutput_->handle = handle;
    output_.reset();
    start_ = positionOf(handle).value_or(0);
  }
  written_ = 0;
  WriteText(header);
  WriteText(markComment);
  catalog->pages = pages;
  if (catalog->hasOutlines) {
    catalog->outlines = outlines;
  }
  return true;
}

void CPDFFile::saveThrough(CPDFStream& stream, std::string_view content) {
  while (objects[written_].get() != &stream) {
    writeObject(beginNextObject());
  }
  beginNextObject();
  writePart([&](CPDFMemBlock& out) { stream.writeHead(out, content.size()); });
  output_.write(content.data(), content.size());
  writePart([&](CPDFMemBlock& out) { stream.writeTail(out); });
  stream.dictionary.entries = std::vector<CPDFDictionaryEntry>();  // frees memory: there is a stream for each page
}

void CPDFFile::endSave() {
  while (written_ < objects.size()) {
    writeObject(beginNextObject());
  }
  xrefs->objects = &objects;
  begin(*xrefs);
  writeObject(*xrefs);
  trailer->xrefs = xrefs.get();
  trailer->root = catalog;
  begin(*trailer);
  writeObject(*trailer);
  WriteText(u"%%EOF");
  output_.flush();
  if (!callerOwnsHandle) {
    if (!closeFile(handle)) {
      keepSystemError(reason_);
    }
    handle = nullptr;
  }
}

}  // namespace PDFStuffer
