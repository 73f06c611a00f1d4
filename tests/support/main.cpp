// The main function of every test program. It runs all tests in one process, because starting a process costs more than
// most tests, above all under Wine and with sanitizers. The option --results=FILE names a file that gets a line
// "listed NAME" for each test before the first one runs, and "passed NAME" as each passes. A program that crashes
// leaves its remaining tests listed and not passed.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace {

std::string nameOf(const testing::TestInfo& test) { return std::string(test.test_suite_name()) + "." + test.name(); }

class Results : public testing::EmptyTestEventListener {
 public:
  explicit Results(std::ofstream file) : file_(std::move(file)) {}

  // Lists disabled tests too: they do not pass.
  void OnTestProgramStart(const testing::UnitTest& program) override {
    for (int suite = 0; suite < program.total_test_suite_count(); ++suite) {
      const testing::TestSuite& tests = *program.GetTestSuite(suite);
      for (int test = 0; test < tests.total_test_count(); ++test) {
        file_ << "listed " << nameOf(*tests.GetTestInfo(test)) << '\n';
      }
    }
    file_.flush();
  }

  // A skipped test has not passed.
  void OnTestEnd(const testing::TestInfo& test) override {
    if (test.result()->Passed()) {
      file_ << "passed " << nameOf(test) << std::endl;
    }
  }

 private:
  std::ofstream file_;
};

bool writeResults(const char* path) {
  std::ofstream file(path, std::ios::binary);
  if (!file) {
    std::cerr << "cannot write test results to " << path << '\n';
    return false;
  }
  testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<Results>(std::move(file)).release());
  return true;
}

// The value of the option that begins with @p prefix, or null.
const char* optionValue(int argc, char** argv, std::string_view prefix) {
  for (int i = 1; i < argc; ++i) {
    if (std::string_view(argv[i]).substr(0, prefix.size()) == prefix) {
      return argv[i] + prefix.size();
    }
  }
  return nullptr;
}

// A process that GoogleTest starts for a death test gets all options of the program, but writes no results.
bool isDeathTestChild(int argc, char** argv) {
  return optionValue(argc, argv, "--gtest_internal_run_death_test=") != nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  const char* results = isDeathTestChild(argc, argv) ? nullptr : optionValue(argc, argv, "--results=");
  testing::InitGoogleTest(&argc, argv);
  if (results != nullptr && !writeResults(results)) {
    return EXIT_FAILURE;
  }
  return RUN_ALL_TESTS();
}
