#include "pdf/objects/file.h"

#include "pdf/objects/numbers.h"
#include "pdf/objects/values.h"
#include "platform/clog.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <utility>

using namespace scrivalen::platform;

namespace PDFStuffer {
namespace {

constexpr std::size_t kObjectsPerFlush = 50;
constexpr std::uint64_t kFreeGeneration = 65535;
constexpr std::uint64_t kMostOffset = 9999999999;  // ten digits is what a line of the table has room for

// PDF 1.4, table 3.16.
constexpr std::u16string_view kPageModes[] = {u"UseNone", u"UseOutlines", u"UseThumbs", u"FullScreen"};

bool isPageMode(std::u16string_view mode) {
  return std::find(std::begin(kPageModes), std::end(kPageModes), mode) != std::end(kPageModes);
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
  // An outline without entries is not announced; the classic form names it though it is not even in the file.
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
  CPDFMemBlock part(out.form());
  CPDFDictionary::Write(part);
  part.Append(Piece().text("startxref\r\n").number(xrefs ? xrefs->fileOffset : 0).text("\r\n").view());
  out.AppendBlock(part);
}

bool CPDFFile::HandleSink::take(const char* data, std::size_t size) {
  if (writeAll(handle, data, size)) {
    return true;
  }
  std::wstring reason;
  CLog::FormatLastError(reason);
  if (error.empty()) {
    error = std::move(reason);
  }
  return false;
}

CPDFFile::CPDFFile(NativeFile file, Form form) : handle(file), block_(form), buffer_(sink_) {
  catalog = &AddObject(std::make_unique<CPDFCatalog>(nextObjectNumber));
  pages = &AddObject(std::make_unique<CPDFPages>(nextObjectNumber));
  xrefs = std::make_unique<CPDFXRefs>();
  trailer = std::make_unique<CPDFTrailer>();
}

CPDFFile::~CPDFFile() {
  if (!callerOwnsHandle && handle) {
    closeFile(handle);
  }
}

CPDFPage* CPDFFile::AddPage(std::u16string name) {
  CPDFPage& page = AddObject(std::make_unique<CPDFPage>(nextObjectNumber));
  AddObject(page.takeContent());
  page.name = std::move(name);
  page.parent = pages;
  page.owner = this;
  pages->children.push_back(&page);
  return &page;
}

CPDFAnnot* CPDFFile::AddAnnotation() { return &AddObject(std::make_unique<CPDFAnnot>(nextObjectNumber)); }

void CPDFFile::CreateOutlines() {
  outlines = &AddObject(std::make_unique<CPDFOutLines>(nextObjectNumber));
  catalog->outlines = outlines;
  catalog->hasOutlines = true;
}

CPDFStandardFont* CPDFFile::AddStandardFont(std::u16string name, PDF_STANDARD_FONT_FACE face) {
  CPDFStandardFont& font = AddObject(std::make_unique<CPDFStandardFont>(nextObjectNumber));
  font.name = std::move(name);
  font.face = face;
  fonts.push_back({font.objectNumber, font.generation, font.name, &font});
  return &font;
}

void CPDFFile::SetPageMode(const std::u16string* mode) {
  catalog->pageMode = mode ? std::optional<std::u16string>(*mode) : std::nullopt;
}

// Each code unit is one byte of the file, its low one.
void CPDFFile::WriteText(std::u16string_view text) {
  for (const char16_t unit : text) {
    buffer_.put(static_cast<char>(unit & 0xFF));
  }
}

void CPDFFile::noteLoss(const wchar_t* reason) {
  whole_ = false;
  if (sink_.error.empty()) {
    sink_.error = reason;
  }
}

// A failure costs the object what it has not written yet; the file goes on.
void CPDFFile::writeObject(CPDFObject& object) {
  object.fileOffset = position();
  if (object.fileOffset > kMostOffset) {
    noteLoss(L"A PDF cannot be larger than 10 gigabytes");
  }
  block_.Rewind();
  try {
    object.Write(block_);
  } catch (const std::exception&) {
    block_.noteLoss();
  }
  if (!block_.isWhole()) {
    noteLoss(L"An object could not be made");
  }
  buffer_.write(block_.text().data(), block_.text().size());
}

void CPDFFile::writeNextObject() {
  if (written_ % kObjectsPerFlush == 0) {
    buffer_.flush();
  }
  writeObject(*objects[written_++]);
}

bool CPDFFile::Save() {
  if (!beginSave()) {
    return false;
  }
  endSave();
  return true;
}

bool CPDFFile::beginSave() {
  if (isInvalid(handle)) {
    return false;
  }
  sink_.handle = handle;
  sink_.error.clear();
  buffer_.reset();
  start_ = positionOf(handle).value_or(0);
  written_ = 0;
  whole_ = true;
  WriteText(header);
  WriteText(markComment);
  catalog->pages = pages;
  if (catalog->hasOutlines) {
    catalog->outlines = outlines;
  }
  return true;
}

void CPDFFile::saveThrough(const CPDFObject& last) {
  while (written_ < objects.size()) {
    const CPDFObject* const object = objects[written_].get();
    writeNextObject();
    if (object == &last) {
      return;
    }
  }
}

void CPDFFile::endSave() {
  while (written_ < objects.size()) {
    writeNextObject();
  }
  xrefs->objects = &objects;
  writeObject(*xrefs);
  trailer->xrefs = xrefs.get();
  trailer->root = catalog;
  writeObject(*trailer);
  WriteText(u"%%EOF");
  whole_ = buffer_.flush() && whole_;
  if (!callerOwnsHandle) {
    whole_ = closeFile(handle) && whole_;
    handle = nullptr;
  }
}

}  // namespace PDFStuffer
