#include "document/document.h"
#include "support/documents/recording_writer.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <string>

using namespace scrivalen;
using namespace scrivalen::document;
using namespace scrivalen::test;

TEST(DocumentOutput, CannotBeTheNewFileOfAnotherOutputInAnotherCase) {
  const TemporaryFolder folder;
  Document document;
  document.addFile(kRecordingFormat, narrowPath(folder / L"\u00C4.txt"));
  document.addFile(kOtherRecordingFormat, narrowPath(folder / L"\u00E4.TXT"));
  EXPECT_EQ(document.open(), Status::FileError);
  EXPECT_EQ(document.output(0)->result(), Status::Ok);
  EXPECT_NE(std::string(document.output(1)->error()).find("another output writes to it"), std::string::npos);
}
