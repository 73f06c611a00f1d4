#include "formats/pdf/objects/containers.h"

#include "formats/pdf/objects/values.h"

#include <algorithm>
#include <limits>

namespace PDFStuffer {
namespace {

// A value that fails keeps the bytes it has already written.
void writeValue(CPDFObject& value, CPDFMemBlock& out) {
  try {
    value.Write(out);
  } catch (...) {
    out.noteLoss();
  }
}

void writeEntry(const CPDFDictionaryEntry& entry, CPDFMemBlock& out) {
  CPDFMemBlock key(out.form());
  CPDFMemBlock value(out.form());
  if (entry.key) {
    entry.key->Write(key);
  }
  if (entry.value) {
    writeValue(*entry.value, value);
  }
  if (key.length() > 0 && value.length() > 0) {
    out.AppendBlock(key);
    out.Append(" ");
    out.AppendBlock(value);
    out.Append("\r\n");
  } else if (!key.isWhole() || !value.isWhole()) {
    out.noteLoss();
  }
}

}  // namespace

void CPDFArray::Write(CPDFMemBlock& out) {
  out.Append("[");
  for (const auto& element : elements) {
    CPDFMemBlock part(out.form());
    element->Write(part);
    part.Append(lineBreaks ? "\r\n" : " ");
    out.AppendBlock(part);
  }
  out.Append("]\r\n");
}

void CPDFDictionary::AddEntry(std::unique_ptr<CPDFObject> key, std::unique_ptr<CPDFObject> value) {
  entries.push_back({std::move(value), std::move(key)});
}

void CPDFDictionary::addNamed(const char16_t* key, std::unique_ptr<CPDFObject> value) {
  AddEntry(std::make_unique<CPDFName>(key), std::move(value));
}

void CPDFDictionary::addName(const char16_t* key, std::u16string name) {
  addNamed(key, std::make_unique<CPDFName>(std::move(name)));
}

void CPDFDictionary::addNumber(const char16_t* key, std::int32_t value) {
  addNamed(key, std::make_unique<CPDFNumber>(value));
}

void CPDFDictionary::addReference(const char16_t* key, const CPDFObject* target) {
  addNamed(key, std::make_unique<CPDFIndirectRef>(target));
}

void CPDFDictionary::Write(CPDFMemBlock& out) {
  CPDFMemBlock whole(out.form());
  WriteHeader(whole);
  whole.Append("<<\r\n");
  for (const auto& entry : entries) {
    writeEntry(entry, whole);
  }
  whole.Append(">>\r\n");
  WriteFooter(whole);
  out.AppendBlock(whole);
}

void CPDFStream::Write(CPDFMemBlock& out) {
  writeHead(out, data.length());
  out.AppendBlock(data);
  writeTail(out);
}

void CPDFStream::writeHead(CPDFMemBlock& out, std::uint64_t length) {
  constexpr std::uint64_t kMax = std::numeric_limits<std::int32_t>::max();
  const std::uint64_t announced = out.isConforming() ? length : 2 * length;
  dictionary.addNumber(u"Length", static_cast<std::int32_t>(std::min(announced, kMax)));
  WriteHeader(out);
  dictionary.Write(out);
  out.Append("stream\r\n");
}

void CPDFStream::writeTail(CPDFMemBlock& out) const {
  out.Append("\r\nendstream\r\n");
  WriteFooter(out);
}

}  // namespace PDFStuffer
