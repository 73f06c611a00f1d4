#pragma once

#include "environment.h"
#include "support/files.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command::test {

/// An environment in memory.
class TestEnvironment {
 public:
  TestEnvironment();
  TestEnvironment(const TestEnvironment&) = delete;
  TestEnvironment& operator=(const TestEnvironment&) = delete;

  const Environment& get() const { return environment_; }
  Environment& get() { return environment_; }

  std::string input;  ///< the part of standard input not read yet
  std::string output;
  std::string error;
  std::map<std::string, std::string> variables;

 private:
  Environment environment_;
};

/// Replaces standard input by a table of two columns, far longer than any test needs to read.
class LongTable {
 public:
  static constexpr std::size_t kSize = 16 << 20;

  explicit LongTable(TestEnvironment& environment);
  LongTable(const LongTable&) = delete;
  LongTable& operator=(const LongTable&) = delete;

  /// How many bytes of it were read.
  std::size_t read() const { return read_; }

 private:
  std::size_t read_ = 0;
};

struct Result {
  int status = 0;
  std::string output;
  std::string error;
};

/// Runs the command in a temporary folder that holds only the files of the test.
class CommandRun {
 public:
  /// Writes a file. An argument that begins with "@/" names a file in the folder.
  CommandRun& with(std::string_view name, std::string_view bytes);
  Result run(const std::vector<std::string>& arguments);

  std::string path(std::string_view name) const;
  std::wstring widePath(std::string_view name) const;
  std::filesystem::path fsPath(std::string_view name) const { return scrivalen::test::asPath(widePath(name)); }
  bool has(std::string_view name) const { return scrivalen::test::exists(widePath(name)); }
  std::string bytes(std::string_view name) const { return scrivalen::test::bytesOf(widePath(name)); }
  /// The content of a page without a template, without the line ends around it.
  std::string body(std::string_view name) const;
  /// The names of all files in the folder, sorted.
  std::vector<std::string> names() const;

  TestEnvironment environment;

 private:
  scrivalen::test::TemporaryFolder folder_;
};

/// A Markdown text converted to one format.
std::string htmlOf(std::string_view markdown, const std::vector<std::string>& options = {});
std::string textOf(std::string_view markdown, const std::vector<std::string>& options = {});
std::string xmlOf(std::string_view markdown);

}  // namespace scrivalen::command::test
