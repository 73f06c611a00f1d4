#include "options/option_group.h"

#include "errors.h"
#include "options/effect.h"
#include "options/suggestion.h"
#include "system/files/files.h"
#include "text/ascii.h"
#include "text/names/similar.h"

#include <array>

namespace scrivalen::command {
namespace {

using namespace std::string_view_literals;

// What the help and the shells name.
constexpr std::array kInputFormats = {"markdown"sv, "csv"sv, "tsv"sv};
constexpr std::array kInputEncodings = {"utf-8"sv, "latin-1"sv, "windows-1252"sv, "utf-16le"sv, "utf-16be"sv};

struct FormatName {
  std::string_view name;
  InputFormat format;
};

constexpr FormatName kInputFormatNames[] = {{"markdown", InputFormat::Markdown},
                                            {"md", InputFormat::Markdown},
                                            {"csv", InputFormat::Csv},
                                            {"tsv", InputFormat::Tsv},
                                            {"tab", InputFormat::Tsv}};

std::optional<InputFormat> formatNamed(std::string_view nameOrExtension) {
  const std::string wanted = scrivalen::asciiLowered<char>(nameOrExtension);
  for (const FormatName& name : kInputFormatNames) {
    if (name.name == wanted) {
      return name.format;
    }
  }
  return std::nullopt;
}

std::string extensionOf(const std::string& input) {
  const std::wstring path = scrivalen::widePath(input);
  const std::wstring_view name = scrivalen::fileNameOf(path);
  const std::size_t dot = name.rfind(L'.');
  return dot == name.npos ? std::string() : scrivalen::narrowPath(name.substr(dot + 1));
}

InputFormat inputFormat(const std::optional<std::string>& from, const std::string& input) {
  if (!from) {
    return formatNamed(extensionOf(input)).value_or(InputFormat::Markdown);
  }
  const auto format = formatNamed(*from);
  if (!format) {
    throw UsageError("--from takes markdown, csv or tsv, not '" + *from + "'" +
                     suggestion(*from, {kInputFormats.begin(), kInputFormats.end()}, ""));
  }
  return *format;
}

// Quotes and line ends have a meaning of their own in CSV.
std::optional<char> delimiter(const std::optional<std::string>& argument, InputFormat format) {
  if (!argument) {
    return format == InputFormat::Tsv ? std::optional('\t') : std::nullopt;
  }
  const std::string text = *argument == "\\t" ? "\t" : *argument;
  const auto c = text.empty() ? 0 : static_cast<unsigned char>(text.front());
  if (text.size() != 1 || text == "\"" || (c < 0x20 && c != '\t') || c > 0x7E) {
    throw UsageError("--delimiter takes one ASCII character, or \\t for a tab, not '" + *argument + "'");
  }
  return text.front();
}

InputEncoding encoding(const std::string& name) {
  const auto named = encodingNamed(name);
  if (!named) {
    throw UsageError("--encoding takes " + std::string(kEncodingNames) + ", not '" + name + "'" +
                     suggestion(name, {kInputEncodings.begin(), kInputEncodings.end()}, ""));
  }
  return *named;
}

class InputOptions : public OptionGroup {
 public:
  explicit InputOptions(Options& options) : options_(options) {}

  std::string_view title() const override { return "Input"; }

  std::vector<Option> declare() override {
    return {
        {&inputs_, "INPUT", "", "A file to read; - is standard input", Offer::Files},
        {&from_,
         "--from",
         "FORMAT",
         "The format of the input: markdown, csv or tsv (default: that of its extension, else markdown)",
         Offer::Words,
         {kInputFormats.begin(), kInputFormats.end()}},
        {&encoding_,
         "--encoding",
         "NAME",
         "The encoding of the input: utf-8, latin-1, windows-1252, utf-16le or utf-16be (default: UTF-8, and UTF-16 by "
         "its byte-order mark)",
         Offer::Words,
         {kInputEncodings.begin(), kInputEncodings.end()}},
        {&delimiter_, "--delimiter", "CHARACTER",
         "What separates the cells of CSV; \\t is a tab (default: found from the first rows)"},
    };
  }

  void interpret() override {
    if (inputs_.empty()) {
      throw UsageError("no input given; see scrivalen --help");
    }
    if (encoding_) {
      options_.encoding = encoding(*encoding_);
    }
    for (const std::string& input : inputs_) {
      if (input.empty()) {
        throw UsageError("the name of an input is empty; give the path of a file, or - for standard input");
      }
      Job job;
      job.input = input;
      job.format = inputFormat(from_, input);
      if (!from_) {
        warnOfTypingError(input);
      }
      job.delimiter = delimiter(delimiter_, job.format);
      options_.jobs.push_back(std::move(job));
    }
    if (delimiter_) {
      warnWithoutTable(options_, "--delimiter");
    }
  }

 private:
  // "prices.cvs" would be read as Markdown.
  void warnOfTypingError(const std::string& input) {
    static constexpr std::array kTables = {"csv"sv, "tsv"sv};
    const std::string extension = extensionOf(input);
    const std::string_view similar = scrivalen::mostSimilar(extension, kTables);
    if (!similar.empty() && !formatNamed(extension)) {
      options_.warnings.push_back("'" + input + "' is read as Markdown; did you mean --from " + std::string(similar) +
                                  "?");
    }
  }

  Options& options_;
  std::vector<std::string> inputs_;
  std::optional<std::string> from_;
  std::optional<std::string> encoding_;
  std::optional<std::string> delimiter_;
};

}  // namespace

std::unique_ptr<OptionGroup> inputOptions(Options& options) { return std::make_unique<InputOptions>(options); }

}  // namespace scrivalen::command
