#include "command.h"

#include "digits.h"
#include "errors.h"
#include "library_handlers.h"
#include "messages.h"
#include "options/command_line.h"
#include "readers/csv/csv_reader.h"
#include "readers/front_matter/front_matter.h"
#include "readers/markdown/headings.h"
#include "readers/markdown/markdown_reader.h"
#include "readers/text_input.h"
#include "system/files/files.h"
#include "texts.h"
#include "writing/document_run.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::command {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

std::string titleFromName(const std::string& input) {
  if (input == "-") {
    return "Report";
  }
  const std::wstring path = toWide(input);
  return toUtf8(withoutExtension(scrivalen::fileNameOf(path)));
}

std::string_view formatName(InputFormat format) {
  switch (format) {
    case InputFormat::Csv: return "CSV";
    case InputFormat::Tsv: return "TSV";
    default: return "Markdown";
  }
}

// A pipe, such as that of "<(...)" in a shell, is in a folder that has no pictures; empty: the current folder.
std::wstring folderOfPictures(const std::string& input) {
  const std::wstring path = scrivalen::widePath(input);
  return input == "-" || scrivalen::isSpecialFile(path) ? std::wstring() : std::wstring(scrivalen::folderOf(path));
}

// Formats that show raw HTML, or may hold it.
bool takesMarkup(const OutputRequest& output) {
  const std::string_view name = output.format->name;
  return name == "html" || name == "chm" || name == "markdown";
}

std::vector<const OutputRequest*> outputsOf(const Job& job) {
  std::vector<const OutputRequest*> outputs;
  for (const OutputRequest& output : job.outputs) {
    outputs.push_back(&output);
  }
  return outputs;
}

/// One conversion, from its options to its exit status.
class Conversion {
 public:
  Conversion(const Options& options, const Job& job, const Environment& environment, Messages& messages)
      : options_(options), job_(job), environment_(environment), messages_(messages) {}

  int run();

 private:
  using Outputs = std::vector<const OutputRequest*>;

  void readTable(TextInput& input);
  void readMarkdownFrom(TextInput& input);
  void readMarkdownFor(Outputs outputs, const FrontMatter& front, std::string_view text, Safety safety);
  DocumentRun& begin(Outputs outputs, const FrontMatter& front, std::string_view heading);
  void warnOfReplacements(const TextInput& input);
  void noteTime(std::chrono::steady_clock::duration time);

  const Options& options_;
  const Job& job_;
  const Environment& environment_;
  Messages& messages_;
  std::vector<std::unique_ptr<DocumentRun>> runs_;
};

// All content is read before the first output takes its place.
int Conversion::run() {
  const auto begin = std::chrono::steady_clock::now();
  TextInput input(environment_, job_.input, options_.encoding);
  if (job_.format == InputFormat::Markdown) {
    readMarkdownFrom(input);
  } else {
    readTable(input);
  }
  messages_.note({"read '", job_.input, "' as ", formatName(job_.format), ": ", Digits(input.size()).text(), " bytes"});
  for (const auto& run : runs_) {
    run->close();
  }
  warnOfReplacements(input);
  bool isGood = true;
  auto warnings = DocumentRun::Warnings::OfInputAndOutputs;
  for (const auto& run : runs_) {
    isGood = run->report(warnings) && isGood;
    warnings = DocumentRun::Warnings::OfOutputs;  // both documents have the same input
  }
  noteTime(std::chrono::steady_clock::now() - begin);
  return isGood ? kDone : kFailed;
}

void Conversion::noteTime(std::chrono::steady_clock::duration time) {
  const auto tenths = static_cast<std::uint64_t>(time / std::chrono::microseconds(100));
  messages_.note({"'", job_.input, "' took ", Digits(tenths / 10).text(), ".", Digits(tenths % 10).text(), " ms"});
}

DocumentRun& Conversion::begin(Outputs outputs, const FrontMatter& front, std::string_view heading) {
  runs_.push_back(std::make_unique<DocumentRun>(options_, job_, std::move(outputs), environment_, messages_));
  const auto title = options_.title ? options_.title : front.title;
  const std::string own = heading.empty() ? titleFromName(job_.input) : std::string(heading);
  runs_.back()->open(title.value_or(own), title.has_value(), front.settings);
  return *runs_.back();
}

void Conversion::readTable(TextInput& input) {
  begin(outputsOf(job_), {}, {}).write({}, [&](TableSink& sink) {
    readCsv(input, job_.delimiter, options_.csv, sink);
  });
}

// Raw HTML that is passed on holds words. Formats that cannot show it get its text instead, in a document of their own.
void Conversion::readMarkdownFrom(TextInput& input) {
  Outputs safe;
  Outputs unsafe;
  for (const OutputRequest& output : job_.outputs) {
    (options_.unsafe && takesMarkup(output) ? unsafe : safe).push_back(&output);
  }
  const std::string all = input.rest();
  const FrontMatter front = frontMatterOf(all);
  for (const std::string& warning : front.warnings) {
    messages_.warning({"'", job_.input, "': ", warning});
  }
  const std::string_view text = std::string_view(all).substr(front.size);
  if (!safe.empty()) {
    readMarkdownFor(std::move(safe), front, text, Safety::Safe);
  }
  if (!unsafe.empty()) {
    readMarkdownFor(std::move(unsafe), front, text, Safety::Unsafe);
  }
}

// The title is a setting, and the contents come first, so the headings are read before the rest.
void Conversion::readMarkdownFor(Outputs outputs, const FrontMatter& front, std::string_view text, Safety safety) {
  Headings headings;
  if (options_.contents || !(options_.title || front.title)) {
    headings = headingsOf(text, safety, options_.contents ? HeadingSearch::All : HeadingSearch::First);
  }
  DocumentStream::Plan plan;
  plan.folder = folderOfPictures(job_.input);
  if (options_.contents) {
    plan.beginsWithTitle = headings.isFirst;
    plan.headings = std::move(headings.all);
  }
  begin(std::move(outputs), front, headings.title).write(std::move(plan), [&](DocumentSink& sink) {
    readMarkdown(text, safety, sink);
  });
}

void Conversion::warnOfReplacements(const TextInput& input) {
  if (const std::size_t count = input.replaced(); count > 0) {
    messages_.warning({"'", job_.input, "': replaced ", Digits(count).text(), " invalid character",
                       count == 1 ? "" : "s", " with U+FFFD",
                       input.isEncodingDoubtful() ? "; if it is not UTF-8, see --encoding" : ""});
  }
}

// An input that cannot be converted does not stop those after it. An interrupt does.
class Run {
 public:
  Run(const Options& options, const Environment& environment, Messages& messages)
      : options_(options), environment_(environment), messages_(messages) {}

  int run() {
    if (options_.jobs.size() == 1) {
      return Conversion(options_, options_.jobs.front(), environment_, messages_).run();
    }
    requireSettings();
    int status = kDone;
    for (const Job& job : options_.jobs) {
      status = std::max(status, convert(job));
    }
    return status;
  }

 private:
  // Wrong settings are wrong for all inputs, and found before anything is written.
  void requireSettings() {
    const Job& first = options_.jobs.front();
    DocumentRun(options_, first, outputsOf(first), environment_, messages_).applyGivenSettings();
  }

  int convert(const Job& job) {
    try {
      return Conversion(options_, job, environment_, messages_).run();
    } catch (const InputError& error) {
      messages_.error(error.what());
    } catch (const UsageError& error) {
      messages_.error({"'", job.input, "': ", error.what()});  // such as a column that this input does not have
    } catch (const std::bad_alloc&) {
      messages_.error({"out of memory for '", job.input, "'"});
    }
    return kFailed;
  }

  const Options& options_;
  const Environment& environment_;
  Messages& messages_;
};

// Where --quiet hides the warnings, nothing else says why the run failed.
int strictStatus(int status, Messages& messages) {
  const std::size_t count = messages.warnings();
  if (status == kDone && count > 0 && messages.isQuiet()) {
    messages.error({Digits(count).text(),
                    count == 1 ? " warning; --strict makes it a failure" : " warnings; --strict makes them a failure"});
  }
  return count > 0 ? kFailed : status;
}

int runOrThrow(const std::vector<std::string>& arguments, const Environment& environment, Messages& messages) {
  const LibraryHandlers handlers(environment);
  const CommandLine commandLine = parseCommandLine(arguments);
  if (commandLine.printout) {
    if (!environment.writeOutput(*commandLine.printout)) {
      throw std::runtime_error("cannot write to standard output: " + lastErrorText());
    }
    return kDone;
  }
  if (commandLine.options.quiet) {
    messages.beQuiet();
  }
  if (commandLine.options.verbose) {
    messages.beVerbose();
  }
  for (const std::string& warning : commandLine.options.warnings) {
    messages.warning(warning);
  }
  const int status = Run(commandLine.options, environment, messages).run();
  return commandLine.options.strict ? strictStatus(status, messages) : status;
}

}  // namespace

int runCommand(const std::vector<std::string>& arguments, const Environment& environment) {
  Messages messages(environment);
  try {
    return runOrThrow(arguments, environment, messages);
  } catch (const UsageError& error) {
    messages.error(error.what());
    return kWrongUsage;
  } catch (const Interrupted&) {
    messages.error("interrupted");
  } catch (const std::bad_alloc&) {
    messages.error("out of memory");
  } catch (const std::exception& error) {
    messages.error(error.what());
  }
  return kFailed;
}

}  // namespace scrivalen::command
