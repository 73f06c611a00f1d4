#include "system/files/whole_file.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <string>

namespace scrivalen {
namespace {

using test::TemporaryFolder;
using Problem = WholeFile::Problem;

// More than one piece that is read at once.
const std::string kBytes = std::string(100'000, 'a') + "end";

}  // namespace

TEST(WholeFile, IsReadUpToItsLimit) {
  const TemporaryFolder folder;
  test::writeBytes(folder / L"a", kBytes);
  const WholeFile file = readWholeFile(folder / L"a", kBytes.size());
  EXPECT_EQ(file.problem, Problem::None);
  EXPECT_EQ(file.bytes, kBytes);
}

TEST(WholeFile, IsNotReadBeyondItsLimit) {
  const TemporaryFolder folder;
  test::writeBytes(folder / L"a", kBytes);
  const WholeFile file = readWholeFile(folder / L"a", kBytes.size() - 1);
  EXPECT_EQ(file.problem, Problem::TooLarge);
  EXPECT_EQ(file.bytes, "");
}

TEST(WholeFile, MayBeEmpty) {
  const TemporaryFolder folder;
  test::writeBytes(folder / L"a", "");
  EXPECT_EQ(readWholeFile(folder / L"a", 0).problem, Problem::None);
}

TEST(WholeFile, HasTheErrorOfTheSystem) {
  const TemporaryFolder folder;
  const WholeFile file = readWholeFile(folder / L"missing", 1);
  EXPECT_EQ(file.problem, Problem::System);
  EXPECT_EQ(file.error, 2u);  // no such file, on both systems
}

}  // namespace scrivalen
