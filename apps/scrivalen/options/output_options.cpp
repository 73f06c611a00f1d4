#include "options/option_group.h"

#include "errors.h"
#include "options/effect.h"
#include "options/output_request.h"
#include "system/files/files.h"
#include "texts.h"

#include <algorithm>
#include <iterator>

namespace scrivalen::command {
namespace {

class OutputOptions : public OptionGroup {
 public:
  explicit OutputOptions(Options& options) : options_(options) {}

  std::string_view title() const override { return "Output"; }

  std::vector<Option> declare() override {
    return {
        {&outputs_, "-o,--output", "FILE",
         "A file to write, in the format of its extension (." + joined(formatExtensions(), " .") +
             ") or of a prefix, as in html:FILE; FORMAT:- is standard output",
         Offer::Files},
        {&folder_, "--output-dir", "FOLDER",
         "A folder for the outputs of one or several inputs, each named after its input, in the formats of --to",
         Offer::Folders},
        {&formats_, "--to", "FORMAT[,FORMAT...]", "The formats for --output-dir: " + joined(formatNames(), ", "),
         Offer::ListsOfWords, formatNames()},
        {&options_.singleByte, "--single-byte", "", "Write text in Latin-1, with one byte per character, not UTF-8"},
    };
  }

  void interpret() override {
    requireText("--output-dir", folder_, "give the path of a folder");
    if (!outputs_.empty()) {
      addOutputs();
    } else if (folder_ || !formats_.empty()) {
      addOutputsInFolder();
    } else {
      failWithoutOutput();
    }
    if (options_.singleByte) {
      warnWithoutOutput(options_, "--single-byte", "text");
    }
  }

 private:
  // -o names one file, so it can hold what becomes of one input only.
  void addOutputs() {
    if (folder_ || !formats_.empty()) {
      throw UsageError("-o FILE and --output-dir FOLDER --to FORMAT exclude each other; use the one or the others");
    }
    if (options_.jobs.size() > 1) {
      throw UsageError("-o FILE takes one input, not also '" + options_.jobs[1].input +
                       "'; for several inputs use --output-dir FOLDER --to FORMAT");
    }
    std::transform(outputs_.begin(), outputs_.end(), std::back_inserter(options_.jobs.front().outputs), outputRequest);
  }

  void addOutputsInFolder() {
    if (!folder_) {
      throw UsageError("--to FORMAT needs --output-dir FOLDER; for a single file use -o FILE");
    }
    if (formats_.empty()) {
      throw UsageError("--output-dir FOLDER needs --to FORMAT, such as --to html,pdf");
    }
    requireFolder(*folder_);
    const auto formats = formatsOf(formats_);
    for (Job& job : options_.jobs) {
      if (job.input == "-") {
        throw UsageError("standard input has no name for an output in '" + *folder_ + "'; use -o FILE");
      }
      for (const Format* const format : formats) {
        job.outputs.push_back(outputInFolder(*folder_, job.input, *format));
      }
    }
  }

  // "notes.md notes.pdf" is the order of programs that copy.
  [[noreturn]] void failWithoutOutput() const {
    const std::string& last = options_.jobs.back().input;
    const std::size_t dot = last.find_last_of("./\\");
    const bool isOutput = options_.jobs.size() > 1 && dot != std::string::npos && findFormat(last.substr(dot + 1)) &&
                          !scrivalen::pathExists(scrivalen::widePath(last));
    throw UsageError(isOutput ? "no output given; did you mean '-o " + last + "'?"
                              : "no output given (-o FILE); see scrivalen --help");
  }

  static void requireFolder(const std::string& folder) {
    const std::wstring path = scrivalen::widePath(folder);
    if (!scrivalen::isFolder(path)) {
      throw UsageError(scrivalen::pathExists(path) ? "the output folder '" + folder + "' is not a folder"
                                                   : "there is no folder '" + folder + "'; create it first");
    }
  }

  Options& options_;
  std::vector<std::string> outputs_;
  std::optional<std::string> folder_;
  std::vector<std::string> formats_;
};

}  // namespace

std::unique_ptr<OptionGroup> outputOptions(Options& options) { return std::make_unique<OutputOptions>(options); }

}  // namespace scrivalen::command
