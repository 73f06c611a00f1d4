#include "api/api_support.h"
#include "support/faults/out_of_memory.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <tuple>

using namespace scrivalen::test;

namespace {

using Functions = FailingAllocations::Functions;

struct Attempt {
  scrivalen_status result = SCRIVALEN_OK;
  bool hasFailed = false;
};

Attempt write(const char* format, const std::string& path, std::size_t nth, Extent extent) {
  Attempt attempt;
  const FailingAllocations memory(nth, extent, Functions::All);
  const Handle document(scrivalen_new());
  scrivalen_status first = document ? SCRIVALEN_OK : SCRIVALEN_OUT_OF_MEMORY;
  const auto note = [&](scrivalen_status status) { first = first == SCRIVALEN_OK ? status : first; };
  if (document) {
    note(scrivalen_set(document.get(), "clock", "2026-01-31 23:59:59"));
    note(scrivalen_add_file(document.get(), path.c_str(), format));
    note(writeContent(document.get()));
    note(scrivalen_close(document.get()));
  }
  attempt.result = first;
  attempt.hasFailed = memory.hasFailed();
  return attempt;
}

class DeliveryWithoutMemory : public testing::TestWithParam<std::tuple<const char*, Extent>> {};

}  // namespace

TEST_P(DeliveryWithoutMemory, IsDeliveredWholeOrNotAtAll) {
  const auto [format, extent] = GetParam();
  const TemporaryFolder folder;
  const std::wstring file = folder / L"made";
  const std::string path = scrivalen::narrowPath(file);
  contentSteps();
  ASSERT_EQ(write(format, path, 0, extent).result, SCRIVALEN_OK);
  const std::string whole = bytesOf(file);
  const UnfailingLog log;
  std::size_t nth = 1;
  for (bool hasFailed = true; hasFailed && !HasFailure(); ++nth) {
    SCOPED_TRACE(nth);
    writeBytes(file, "earlier");
    const Attempt made = write(format, path, nth, extent);
    hasFailed = made.hasFailed;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(asPath(folder.path())), {}), 1);
    EXPECT_TRUE(made.result == SCRIVALEN_OK || made.result == SCRIVALEN_OUT_OF_MEMORY) << made.result;
    EXPECT_TRUE(bytesOf(file) == (made.result == SCRIVALEN_OK ? whole : "earlier"));
  }
  EXPECT_GT(nth, 200u);
  EXPECT_TRUE(UnfailingLog::lines().empty());
}

INSTANTIATE_TEST_SUITE_P(Each, DeliveryWithoutMemory,
                         testing::Combine(testing::Values("pdf", "xlsx", "docx"),
                                          testing::Values(Extent::One, Extent::AllFromThere)));
