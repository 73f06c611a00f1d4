#pragma once

#include "formats/pdf/objects/object.h"

#include <string>

namespace scrivalen::test {

/// An object that leaves its sign where it ends.
class Signed final : public PDFStuffer::CPDFObject {
 public:
  Signed(char sign, std::string& ends) : sign_(sign), ends_(ends) {}
  ~Signed() override { ends_ += sign_; }
  void Write(PDFStuffer::CPDFMemBlock&) override {}

 private:
  char sign_;
  std::string& ends_;
};

}  // namespace scrivalen::test
