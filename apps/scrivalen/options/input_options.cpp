#include "options/option_group.h"

#include "errors.h"
#include "text/ascii.h"

namespace scrivalen::command {
namespace {

InputFormat inputFormat(const std::string& from, const std::string& input) {
  struct Name {
    std::string_view name;
    InputFormat format;
  };
  static constexpr Name kNames[] = {{"markdown", InputFormat::Markdown},
                                    {"md", InputFormat::Markdown},
                                    {"csv", InputFormat::Csv},
                                    {"tsv", InputFormat::Tsv},
                                    {"tab", InputFormat::Tsv}};
  const std::size_t dot = input.rfind('.');
  const std::string wanted = scrivalen::asciiLowered<char>(!from.empty()              ? from
                                                           : dot == std::string::npos ? ""
                                                                                      : input.substr(dot + 1));
  for (const Name& name : kNames) {
    if (name.name == wanted) {
      return name.format;
    }
  }
  if (!from.empty()) {
    throw UsageError("--from takes markdown, csv or tsv, not '" + from + "'");
  }
  return InputFormat::Markdown;
}

// Quotes and line ends have a meaning of their own in CSV.
std::optional<char> delimiter(const std::string& argument, InputFormat format) {
  if (argument.empty()) {
    return format == InputFormat::Tsv ? std::optional('\t') : std::nullopt;
  }
  const std::string text = argument == "\\t" ? "\t" : argument;
  const auto c = static_cast<unsigned char>(text.front());
  if (text.size() != 1 || text == "\"" || (c < 0x20 && c != '\t') || c > 0x7E) {
    throw UsageError("--delimiter takes one ASCII character, not '" + argument + "'");
  }
  return text.front();
}

class InputOptions : public OptionGroup {
 public:
  explicit InputOptions(Options& options) : options_(options) {}

  std::string_view title() const override { return "Input"; }

  std::vector<Option> declare() override {
    return {
        {&inputs_, "INPUT", "", "The files to read; \"-\" is standard input"},
        {&from_, "--from", "FORMAT",
         "The input format: markdown, csv or tsv\n(default: by its extension, otherwise markdown)"},
        {&delimiter_, "--delimiter", "CHARACTER",
         "What separates the cells of CSV; \\t is a tab\n(default: found from the first rows)"},
    };
  }

  void interpret() override {
    if (inputs_.empty()) {
      throw UsageError("no input given; see scrivalen --help");
    }
    for (const std::string& input : inputs_) {
      Job job;
      job.input = input;
      job.format = inputFormat(from_, input);
      job.delimiter = delimiter(delimiter_, job.format);
      options_.jobs.push_back(std::move(job));
    }
  }

 private:
  Options& options_;
  std::vector<std::string> inputs_;
  std::string from_;
  std::string delimiter_;
};

}  // namespace

std::unique_ptr<OptionGroup> inputOptions(Options& options) { return std::make_unique<InputOptions>(options); }

}  // namespace scrivalen::command
