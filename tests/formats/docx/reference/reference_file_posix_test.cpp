#include "formats/docx/docx_writer.h"
#include "made_reference.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <string>

#include <sys/stat.h>

namespace scrivalen::test {
namespace {

// The error of a document with the reference of this path.
std::string errorWithPath(const std::string& path) {
  const document::Format format{"docx", &document::createDocxDocumentWriter};
  MadeDocument document(format);
  document.set("reference", path);
  document.paragraph("x");
  EXPECT_EQ(document.bytes(), "");
  return document.error();
}

}  // namespace

// Nobody writes into the pipe: to open it would wait without end.
TEST(ReferenceFile, IsNoPipeOrDevice) {
  const TemporaryFolder folder;
  const std::string pipe = narrowPath(folder / L"reference.docx");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& path : {pipe, std::string("/dev/zero")}) {
    EXPECT_EQ(errorWithPath(path),
              std::string("The reference '").append(path).append("' cannot be used: the file is a device or a pipe."));
  }
}

}  // namespace scrivalen::test
