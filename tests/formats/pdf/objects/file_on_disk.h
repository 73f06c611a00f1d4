#pragma once

#include "formats/pdf/objects/file.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <string>

namespace scrivalen::test {

/// A PDF file on disk for a test to fill and save.
class FileOnDisk {
 public:
  explicit FileOnDisk(PDFStuffer::Form form = PDFStuffer::Form::Classic)
      : path(folder_ / L"a.pdf"), handle(scrivalen::openExclusive(path)), pdf(handle, form) {
    EXPECT_NE(handle, nullptr);
  }
  FileOnDisk(const FileOnDisk&) = delete;
  FileOnDisk& operator=(const FileOnDisk&) = delete;

  /// Saves the PDF, closes the file and reads it.
  std::string saved() {
    EXPECT_TRUE(pdf.Save());
    return closed();
  }

  std::string closed() {
    EXPECT_TRUE(handle.close());
    return bytesOf(path);
  }

 private:
  TemporaryFolder folder_;

 public:
  const std::wstring path;
  scrivalen::File handle;
  PDFStuffer::CPDFFile pdf;
};

}  // namespace scrivalen::test
