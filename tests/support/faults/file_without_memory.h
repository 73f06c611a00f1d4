#pragma once

#include "support/faults/out_of_memory.h"
#include "support/files.h"
#include "system/files/files.h"

#include "scrivalen/document.h"

#include <filesystem>
#include <iterator>
#include <string>

namespace scrivalen::test {

/// Has a file written over an earlier one while memory runs out at each allocation. The file is then complete, or the
/// failure is reported and the earlier file is left, alone in its folder.
/// @param write  writes the file at a path of UTF-8 and returns the document's status
template <typename Write>
void expectTheFileOrTheEarlierOne(Extent extent, Write write) {
  const TemporaryFolder folder;
  const std::wstring file = folder / L"made";
  const std::string path = narrowPath(file);
  ASSERT_EQ(write(path), SCRIVALEN_OK);
  const std::string good = bytesOf(file);
  runOutOfMemory([&](std::size_t nth) {
    SCOPED_TRACE(nth);
    writeBytes(file, "earlier");
    scrivalen_status result = SCRIVALEN_OK;
    bool hasFailed = false;
    {
      const FailingAllocations memory(nth, extent);
      result = write(path);
      hasFailed = memory.hasFailed();
    }
    EXPECT_TRUE(result == SCRIVALEN_OK || (hasFailed && result == SCRIVALEN_OUT_OF_MEMORY)) << result;
    EXPECT_TRUE(bytesOf(file) == (result == SCRIVALEN_OK ? good : "earlier"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(asPath(folder.path())), {}), 1);
    return hasFailed && !testing::Test::HasFailure();
  });
}

}  // namespace scrivalen::test
