#include "options/option_group.h"

#include "errors.h"
#include "system/files/files.h"
#include "texts.h"

#include <algorithm>
#include <iterator>

namespace scrivalen::command {
namespace {

// "C:\x.html" is a file on a drive, "html:x" a format and its file, "a:b.html" a file with a colon in its name.
OutputRequest outputRequest(const std::string& argument) {
  OutputRequest request{nullptr, argument};
  const std::size_t colon = argument.find(':');
  if (colon != std::string::npos && colon > 1) {
    request.format = findFormat(std::string_view(argument).substr(0, colon));
  }
  if (request.format) {
    request.name = argument.substr(colon + 1);
  } else {
    const std::size_t dot = argument.find_last_of("./\\");
    const bool hasExtension = dot != std::string::npos && argument[dot] == '.';
    request.format = hasExtension ? findFormat(std::string_view(argument).substr(dot + 1)) : nullptr;
  }
  if (request.name.empty()) {
    throw UsageError("the output '" + argument + "' has no file name");
  }
  if (!request.format) {
    throw UsageError("the format of '" + argument + "' is unknown; use " + knownExtensions() + ", or FORMAT:FILE");
  }
  return request;
}

// Whether two names refer to the same file, which need not exist yet.
bool isSameTarget(const std::string& a, const std::string& b) {
  const std::wstring first = scrivalen::widePath(a);
  const std::wstring second = scrivalen::widePath(b);
  return scrivalen::isSameFile(first, second) || scrivalen::resolvedPath(first) == scrivalen::resolvedPath(second);
}

void requireDifferentFiles(const Options& options) {
  for (auto output = options.outputs.begin(); output != options.outputs.end(); ++output) {
    if (options.input != "-" && output->name != "-" && isSameTarget(options.input, output->name)) {
      throw UsageError("the output '" + output->name + "' is the input");
    }
    const auto same = [&](const OutputRequest& other) {
      return other.name == output->name || isSameTarget(other.name, output->name);
    };
    if (std::any_of(options.outputs.begin(), output, same)) {
      throw UsageError("two outputs have the name '" + output->name + "'");
    }
  }
}

class OutputOptions : public OptionGroup {
 public:
  explicit OutputOptions(Options& options) : options_(options) {}

  std::string_view title() const override { return "Output"; }

  std::vector<Option> declare() override {
    return {
        {&outputs_, "-o,--output", "FILE",
         "A file to write, in the format of its extension\n(" + knownExtensions() +
             ") or of a prefix,\nas in html:FILE; FORMAT:- is standard output.\nMay be given several times"},
        {&options_.unsafe, "--unsafe", "",
         "Pass on the raw HTML of Markdown, and addresses\nthat run a program (javascript:)"},
        {&options_.singleByte, "--single-byte", "", "Write text in Latin-1, not UTF-8"},
    };
  }

  void interpret() override {
    if (outputs_.empty()) {
      throw UsageError("no output given (-o FILE); see scrivalen --help");
    }
    std::transform(outputs_.begin(), outputs_.end(), std::back_inserter(options_.outputs), outputRequest);
    requireDifferentFiles(options_);
  }

 private:
  Options& options_;
  std::vector<std::string> outputs_;
};

}  // namespace

std::unique_ptr<OptionGroup> outputOptions(Options& options) { return std::make_unique<OutputOptions>(options); }

}  // namespace scrivalen::command
