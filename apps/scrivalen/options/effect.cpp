#include "options/effect.h"

#include "texts.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

// "a, b or c"
std::string alternatives(std::vector<std::string_view> names) {
  const std::string last(names.back());
  names.pop_back();
  return names.empty() ? last : joined(names, ", ") + " or " + last;
}

void warn(Options& options, std::string_view option, const std::string& reason) {
  options.warnings.push_back(std::string(option) + " has no effect: " + reason);
}

bool hasMarkdown(const Options& options) {
  return std::any_of(options.jobs.begin(), options.jobs.end(),
                     [](const Job& job) { return job.format == InputFormat::Markdown; });
}

bool hasTable(const Options& options) {
  return std::any_of(options.jobs.begin(), options.jobs.end(),
                     [](const Job& job) { return job.format != InputFormat::Markdown; });
}

bool hasOutput(const Options& options, const std::vector<std::string_view>& formats) {
  const auto isOne = [&](const OutputRequest& output) {
    return std::find(formats.begin(), formats.end(), output.format->name) != formats.end();
  };
  return std::any_of(options.jobs.begin(), options.jobs.end(),
                     [&](const Job& job) { return std::any_of(job.outputs.begin(), job.outputs.end(), isOne); });
}

}  // namespace

void warnWithoutOutput(Options& options, std::string_view option, std::string_view formats) {
  const auto names = split(formats, ' ');
  if (!hasOutput(options, names)) {
    warn(options, option, "no output is " + alternatives(names));
  }
}

void warnWithoutMarkdown(Options& options, std::string_view option) {
  if (!hasMarkdown(options)) {
    warn(options, option, "no input is Markdown");
  }
}

void warnWithoutTable(Options& options, std::string_view option) {
  if (!hasTable(options)) {
    warn(options, option, "no input is CSV or TSV");
  }
}

}  // namespace scrivalen::command
