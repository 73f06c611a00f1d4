#pragma once

#include "formats/pdf/objects/object.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace PDFStuffer {

/// An array (PDF 1.4, 3.2.5), which owns its elements.
class CPDFArray final : public CPDFObject {
 public:
  void Write(CPDFMemBlock& out) override;
  /// Whether each element is followed by a line end instead of a blank.
  virtual void SetLineBreaks(bool on) { lineBreaks = on; }

  void Append(std::unique_ptr<CPDFObject> element) { elements.push_back(std::move(element)); }

  bool lineBreaks = false;
  std::vector<std::unique_ptr<CPDFObject>> elements;
};

struct CPDFDictionaryEntry {
  std::unique_ptr<CPDFObject> value;
  std::unique_ptr<CPDFObject> key;  // deleted first
};

/// A dictionary (PDF 1.4, 3.2.6), which owns its keys and values. A key added twice is written twice.
class CPDFDictionary : public CPDFObject {
 public:
  CPDFDictionary() { dictionaryFlag = true; }
  void Write(CPDFMemBlock& out) override;

  void AddEntry(std::unique_ptr<CPDFObject> key, std::unique_ptr<CPDFObject> value);
  /// Adds an entry under a name. @return the value
  template <typename Value>
  Value& add(const char16_t* key, std::unique_ptr<Value> value) {
    Value& added = *value;
    addNamed(key, std::move(value));
    return added;
  }
  void addName(const char16_t* key, std::u16string name);
  void addNumber(const char16_t* key, std::int32_t value);
  void addReference(const char16_t* key, const CPDFObject* target);

  std::vector<CPDFDictionaryEntry> entries;

 private:
  void addNamed(const char16_t* key, std::unique_ptr<CPDFObject> value);
};

/// A stream (PDF 1.4, 3.2.7). In the classic form its Length is twice the true one.
class CPDFStream final : public CPDFObject {
 public:
  explicit CPDFStream(std::uint32_t& nextObjectNumber) { objectNumber = nextObjectNumber++; }
  /// Adds a "Length" entry to the dictionary on each call.
  void Write(CPDFMemBlock& out) override;
  /// Write the parts before and after the data, for @p length bytes of data that are not stored here.
  void writeHead(CPDFMemBlock& out, std::uint64_t length);
  void writeTail(CPDFMemBlock& out) const;

  CPDFMemBlock data;
  CPDFDictionary dictionary;
};

}  // namespace PDFStuffer
