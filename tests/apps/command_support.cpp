#include "command_support.h"

#include "command.h"
#include "system/files/files.h"
#include "texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace scrivalen::command::test {
namespace {

constexpr std::string_view kBodyStart = "<main>\n";
constexpr std::string_view kBodyEnd = "</main>";

std::string withoutNewlinesAround(std::string_view text) {
  while (text.starts_with('\n')) {
    text.remove_prefix(1);
  }
  while (text.ends_with('\n')) {
    text.remove_suffix(1);
  }
  return std::string(text);
}

std::string outputOf(std::string_view markdown, const std::string& output, CommandRun& run,
                     const std::vector<std::string>& options = {}) {
  std::vector<std::string> arguments = {"@/in.md", "-o", "@/" + output};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Result result = run.with("in.md", markdown).run(arguments);
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.status, 0);
  return output;
}

}  // namespace

TestEnvironment::TestEnvironment() {
  environment_.readInput = [this](void* data, std::size_t size) {
    const std::size_t count = std::min(size, input.size());
    std::memcpy(data, input.data(), count);
    input.erase(0, count);
    return std::optional<std::size_t>(count);
  };
  environment_.writeOutput = [this](std::string_view text) {
    output += text;
    return true;
  };
  environment_.writeError = [this](std::string_view text) { error += text; };
  environment_.variable = [this](const char* name) {
    const auto found = variables.find(name);
    return found == variables.end() ? std::nullopt : std::optional<std::string>(found->second);
  };
  environment_.wasInterrupted = [] { return false; };
}

LongTable::LongTable(TestEnvironment& environment) {
  environment.get().readInput = [this](void* data, std::size_t size) {
    constexpr std::string_view kRow = "a cell,another\n";
    const std::size_t count = std::min(size, kSize - read_);
    for (std::size_t at = 0; at < count; ++at) {
      static_cast<char*>(data)[at] = kRow[read_++ % kRow.size()];
    }
    return std::optional(count);
  };
}

CommandRun& CommandRun::with(std::string_view name, std::string_view bytes) {
  scrivalen::test::writeBytes(widePath(name), bytes);
  return *this;
}

Result CommandRun::run(const std::vector<std::string>& arguments) {
  std::vector<std::string> real;
  for (const std::string& argument : arguments) {
    real.push_back(replacedAll<char>(argument, "@/", path("")));
  }
  environment.output.clear();
  environment.error.clear();
  Result result;
  result.status = runCommand(real, environment.get());
  result.output = environment.output;
  result.error = replacedAll<char>(environment.error, path(""), "@/");
  return result;
}

std::string CommandRun::path(std::string_view name) const { return scrivalen::narrowPath(widePath(name)); }

std::wstring CommandRun::widePath(std::string_view name) const { return folder_ / scrivalen::widePath(name); }

std::string CommandRun::body(std::string_view name) const {
  const std::string page = bytes(name);
  const std::size_t begin = page.find(kBodyStart);
  const std::size_t end = page.rfind(kBodyEnd);
  if (begin == std::string::npos || end == std::string::npos) {
    ADD_FAILURE() << "the page has no content: " << page;
    return page;
  }
  const std::size_t start = begin + kBodyStart.size();
  return withoutNewlinesAround(std::string_view(page).substr(start, end - start));
}

std::vector<std::string> CommandRun::names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(fsPath(""))) {
    const std::u8string name = entry.path().filename().u8string();
    names.emplace_back(name.begin(), name.end());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string htmlOf(std::string_view markdown, const std::vector<std::string>& options) {
  CommandRun run;
  return run.body(outputOf(markdown, "out.html", run, options));
}

std::string textOf(std::string_view markdown, const std::vector<std::string>& options) {
  CommandRun run;
  return run.bytes(outputOf(markdown, "out.txt", run, options));
}

std::string xmlOf(std::string_view markdown) {
  CommandRun run;
  return run.bytes(outputOf(markdown, "out.xml", run));
}

}  // namespace scrivalen::command::test
