#pragma once

#include "formats/pdf/objects/object.h"

#include <cstdint>
#include <memory>
#include <string>

namespace PDFStuffer {

/// A name (PDF 1.4, 3.2.4). The classic form writes it unescaped.
class CPDFName final : public CPDFObject {
 public:
  explicit CPDFName(std::u16string text = {}) : name(std::move(text)) {}
  void Write(CPDFMemBlock& out) override;

  std::u16string name;
};

/// An integer or a real number (PDF 1.4, 3.2.2). A copy is always an integer.
class CPDFNumber final : public CPDFObject {
 public:
  explicit CPDFNumber(std::int32_t value = 0) : intValue(value) {}
  CPDFNumber(const CPDFNumber& other);
  void Write(CPDFMemBlock& out) override;

  std::int32_t intValue;
  double realValue = 0;
  bool isInteger = true;
};

/// A string (PDF 1.4, 3.2.3 and 3.8.1). The classic form writes it unescaped; the conforming form escapes it and writes
/// non-ASCII text as UTF-16.
class CPDFString final : public CPDFObject {
 public:
  explicit CPDFString(std::u16string words = {}) : text(std::move(words)) {}
  void Write(CPDFMemBlock& out) override;

  std::u16string text;
  /// Written instead of the text when rawLength is not zero.
  std::unique_ptr<char16_t[]> raw;
  std::uint32_t rawLength = 0;
};

/// A reference to an indirect object (PDF 1.4, 3.2.9).
class CPDFIndirectRef final : public CPDFObject {
 public:
  explicit CPDFIndirectRef(const CPDFObject* object = nullptr) : target(object) {}
  void Write(CPDFMemBlock& out) override;

  /// Not owned; null is written as object 0.
  const CPDFObject* target;
};

/// A rectangle (PDF 1.4, 3.8.3), in points.
class CPDFRect final : public CPDFObject {
 public:
  CPDFRect() = default;
  CPDFRect(std::int32_t x0, std::int32_t y0, std::int32_t x1, std::int32_t y1)
      : left(x0), bottom(y0), right(x1), top(y1) {}
  void Write(CPDFMemBlock& out) override;

  std::int32_t left = 0, bottom = 0, right = 0, top = 0;
};

/// A date (PDF 1.4, 3.8.2). The classic form writes local time without the colon after D, although it ends in Z; the
/// conforming form writes UTC. A time without a calendar date is not written.
class CPDFDate final : public CPDFObject {
 public:
  explicit CPDFDate(std::int64_t seconds = 0) : time(seconds) {}
  void Write(CPDFMemBlock& out) override;

  /// Seconds since 1970-01-01 UTC.
  std::int64_t time;
};

}  // namespace PDFStuffer
