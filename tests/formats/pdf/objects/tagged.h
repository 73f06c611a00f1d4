#pragma once

#include "formats/pdf/objects/object.h"

#include <string>

namespace scrivalen::test {

/// An object that appends its tag to a string when it is deleted.
class Tagged final : public PDFStuffer::CPDFObject {
 public:
  Tagged(char tag, std::string& deleted) : tag_(tag), deleted_(deleted) {}
  ~Tagged() override { deleted_ += tag_; }
  void Write(PDFStuffer::CPDFMemBlock&) override {}

 private:
  char tag_;
  std::string& deleted_;
};

}  // namespace scrivalen::test
