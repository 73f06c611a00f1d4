#include "command.h"
#include "command_support.h"
#include "support/bytes.h"
#include "support/faults/allocation_counter.h"
#include "texts.h"

#include <scrivalen/host.h>

#include <gtest/gtest.h>

#include <tuple>

namespace scrivalen::command::test {
namespace {

using scrivalen::test::FailingAllocations;
using scrivalen::test::UnfailingAllocations;
using Extent = FailingAllocations::Extent;
using Functions = FailingAllocations::Functions;

constexpr const char* kOutput = "an output of a name that no string holds in itself";
constexpr std::string_view kBefore = "what was there before";

constexpr std::string_view kMarkdown =
    "---\ntitle: A title of some length\nkeywords: [one, another one]\n---\n"
    "# A heading of some *length*, [linked](#table)\n\nText with `code`, <b>tags</b>, <!-- a comment --> and &amp;.\n\n"
    "- [ ] an item\n\n  > a quote\n\n```cpp\nint main() {}\n```\n\n## Table\n\n"
    "| one | another one |\n| --- | ---: |\n| ![an image](picture.png) | a cell of more than a few letters |\n\n---\n";

constexpr std::string_view kCsv =
    "one,another one\n\"a cell, \"\"quoted\"\", of more than a few letters\",2\n3.5\" disk,x\n";

struct Case {
  const char* name;
  const char* input;
  const char* format;
  std::vector<std::string> options;
  Functions functions = Functions::All;
};

struct Attempt {
  int status = 0;
  std::string error;
  bool hasFailed = false;
};

// Keeps allocations of the environment itself from failing.
void keepMemoryFor(TestEnvironment& environment) {
  environment.get().writeOutput = [&environment](std::string_view text) {
    const UnfailingAllocations ownMemory;
    environment.output += text;
    return true;
  };
  environment.get().writeError = [&environment](std::string_view text) {
    const UnfailingAllocations ownMemory;
    environment.error += text;
  };
  environment.variables["SOURCE_DATE_EPOCH"] = "0";
}

struct CommandWithoutMemory : testing::TestWithParam<std::tuple<Case, Extent>> {
  CommandWithoutMemory() {
    scrivalen::SetDataFolder(toWide(SCRIVALEN_DATA_FOLDER).c_str());
    run.with("in.md", kMarkdown).with("in.csv", kCsv).with("styles.css", "sheet { font-family: Arial }");
    keepMemoryFor(run.environment);
    arguments = {run.path(test.input), "-o", std::string(test.format) + ":" + run.path(kOutput)};
    for (const std::string& option : test.options) {
      arguments.push_back(replacedAll<char>(option, "@/", run.path("")));
    }
  }

  ~CommandWithoutMemory() override { scrivalen::SetDataFolder(nullptr); }

  // The output without the path in the stand-in compiler's record: each run makes its help in a folder of its own.
  std::string output() const {
    constexpr std::string_view kPath = "argument ";
    constexpr std::string_view kProject = "report.hhp";
    const std::string bytes = run.bytes(kOutput);
    const std::size_t end = bytes.starts_with(kPath) ? bytes.find(kProject) : std::string::npos;
    return end == std::string::npos ? bytes
                                    : replacedAll<char>(bytes, bytes.substr(kPath.size(), end - kPath.size()), "");
  }

  Attempt attempt(std::size_t nth) {
    Attempt made;
    run.with(kOutput, kBefore);
    run.environment.error.clear();
    const FailingAllocations memory(nth, extent, test.functions);
    made.status = runCommand(arguments, run.environment.get());
    const UnfailingAllocations ownMemory;
    made.hasFailed = memory.hasFailed();
    made.error = run.environment.error;
    return made;
  }

  const Case test = std::get<0>(GetParam());
  const Extent extent = std::get<1>(GetParam());
  CommandRun run;
  std::vector<std::string> arguments;
};

std::string name(const testing::TestParamInfo<CommandWithoutMemory::ParamType>& test) {
  const auto& [testCase, extent] = test.param;
  return std::string(testCase.name) + (extent == Extent::One ? "_OneFails" : "_AllFail");
}

// One failure may be harmless: code that fails to grow a block in place can take another way.
TEST_P(CommandWithoutMemory, ReportsTheFailureAndKeepsTheExistingFile) {
  const Attempt good = attempt(0);
  ASSERT_EQ(good.status, 0) << good.error;
  const std::string goodBytes = output();
  const std::vector<std::string> names = run.names();
  std::size_t nth = 1;
  for (bool hasFailed = true; hasFailed && !HasFailure(); ++nth) {
    SCOPED_TRACE(nth);
    const Attempt made = attempt(nth);
    hasFailed = made.hasFailed;
    EXPECT_EQ(run.names(), names);
    if (made.status == 0) {
      EXPECT_TRUE(scrivalen::test::areSameBytes(goodBytes, output()));
      EXPECT_EQ(made.error, good.error);
    } else {
      EXPECT_EQ(made.status, 1);
      EXPECT_NE(made.error.find("memory"), std::string::npos) << made.error;
      EXPECT_EQ(run.bytes(kOutput), kBefore);
    }
  }
  EXPECT_GT(nth, 100u);
}

// The spreadsheet library does not survive a failing malloc: it frees blocks that it never got.
INSTANTIATE_TEST_SUITE_P(
    Each, CommandWithoutMemory,
    testing::Combine(
        testing::Values(Case{"Text", "in.md", "text", {"--toc"}}, Case{"Html", "in.md", "html", {"--unsafe"}},
                        Case{"Xml", "in.csv", "xml", {}}, Case{"Rtf", "in.md", "rtf", {}},
                        Case{"Docx", "in.md", "docx", {"--toc"}}, Case{"Pdf", "in.md", "pdf", {"--toc"}},
                        Case{"Xlsx", "in.csv", "xlsx", {"--styles", "@/styles.css"}, Functions::OperatorNew},
                        Case{"Chm", "in.md", "chm", {}}),
        testing::Values(Extent::One, Extent::AllFromThere)),
    name);

// Of several inputs, the one whose conversion lacks memory fails alone. Memory for the options is needed by all.
TEST(SeveralInputsWithoutMemory, FailOneByOne) {
  CommandRun run;
  run.with("in.md", std::string(kMarkdown).append("\n").append(kMarkdown)).with("table.csv", kCsv);
  keepMemoryFor(run.environment);
  const std::vector<std::string> arguments = {
      run.path("in.md"), run.path("table.csv"), "--output-dir", run.path(""), "--to", "text"};
  ASSERT_EQ(runCommand(arguments, run.environment.get()), 0);
  const std::string page = run.bytes("in.txt");
  const std::string table = run.bytes("table.txt");
  std::size_t withOneOutput = 0;
  bool hasFailed = true;
  for (std::size_t nth = 1; hasFailed && !HasFailure(); ++nth) {
    SCOPED_TRACE(nth);
    run.with("in.txt", kBefore).with("table.txt", kBefore);
    run.environment.error.clear();
    int status = 0;
    {
      const FailingAllocations memory(nth, Extent::One, Functions::OperatorNew);
      status = runCommand(arguments, run.environment.get());
      const UnfailingAllocations ownMemory;
      hasFailed = memory.hasFailed();
    }
    const bool hasPage = run.bytes("in.txt") == page;
    const bool hasTable = run.bytes("table.txt") == table;
    EXPECT_TRUE(hasPage || run.bytes("in.txt") == kBefore);
    EXPECT_TRUE(hasTable || run.bytes("table.txt") == kBefore);
    EXPECT_EQ(status, hasPage && hasTable ? 0 : 1);
    EXPECT_EQ(status == 0, run.environment.error.find("out of memory") == std::string::npos) << run.environment.error;
    withOneOutput += hasPage != hasTable ? 1 : 0;
  }
  EXPECT_GT(withOneOutput, 100u);
}

}  // namespace
}  // namespace scrivalen::command::test
