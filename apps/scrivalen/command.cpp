#include "command.h"

#include "errors.h"
#include "events/distributor.h"
#include "library_handlers.h"
#include "messages.h"
#include "options.h"
#include "output/exception_barrier.h"
#include "readers/csv_reader.h"
#include "readers/markdown_reader.h"
#include "readers/text_input.h"
#include "system/files/files.h"
#include "texts.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace scrivalen::command {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

std::wstring titleFromName(const std::string& input) {
  if (input == "-") {
    return L"Report";
  }
  std::wstring name(scrivalen::fileNameOf(toWide(input)));
  const std::size_t dot = name.rfind(L'.');
  if (dot != std::wstring::npos && dot > 0) {
    name.resize(dot);
  }
  return name;
}

// With its byte-order mark, which the library logs.
std::string styleSheet(const Environment& environment, const std::string& name) {
  return TextInput(environment, name, TextInput::ByteOrderMark::Kept).rest();
}

DocumentSettings documentSettings(const Options& options, const Environment& environment) {
  DocumentSettings settings;
  settings.title = options.title ? toWide(*options.title) : titleFromName(options.input);
  for (const auto& [name, value] : options.properties) {
    settings.properties.emplace_back(toWide(name), toWide(value));
  }
  settings.templateFile = options.templateFile;
  if (!options.stylesFile.empty()) {
    settings.styles = toWide(styleSheet(environment, options.stylesFile));
  }
  settings.columnSeparator = toWide(options.separator);
  settings.landscape = options.landscape;
  settings.singleByte = options.singleByte;
  settings.conforming = !options.classic;
  return settings;
}

void read(TextInput& input, const Options& options, EventSink& sink) {
  switch (options.inputFormat) {
    case InputFormat::Markdown: return readMarkdown(input.rest(), options.unsafe ? Safety::Unsafe : Safety::Safe, sink);
    case InputFormat::Csv: return readCsv(input, ',', sink);
    case InputFormat::Tsv: return readCsv(input, '\t', sink);
  }
}

/// One conversion, from its options to its exit status.
class Conversion {
 public:
  Conversion(const Options& options, const Environment& environment, Messages& messages)
      : options_(options), environment_(environment), messages_(messages) {}

  int run();

 private:
  Distributor::Plan plan();
  void poll();
  void showProgress(std::size_t blocks);
  void stopWhenInterrupted() const;
  void readInput();
  void finish();
  void deliver();
  void warnOfReplacements(std::size_t count);
  std::vector<std::string> loggedWarnings() const;
  std::string userMessage(const std::wstring& line) const;

  const Options& options_;
  const Environment& environment_;
  Messages& messages_;
  LibraryLog log_;
  std::size_t notedLines_ = 0;  // log lines already passed to the outputs
  Outputs outputs_;
};

int Conversion::run() {
  for (const OutputRequest& request : options_.outputs) {
    outputs_.push_back(std::make_unique<Output>(*request.format, request.name));
  }
  try {
    readInput();
  } catch (const NoOutputLeft&) {
    // Each output reports its own error below.
  }
  finish();
  const std::vector<std::string> warnings = loggedWarnings();
  deliver();
  for (const std::string& warning : warnings) {
    messages_.warning(warning);
  }
  const auto failed = [](const auto& output) { return output->failed(); };
  return std::any_of(outputs_.begin(), outputs_.end(), failed) ? kFailed : kDone;
}

Distributor::Plan Conversion::plan() {
  Distributor::Plan plan;
  plan.settings = documentSettings(options_, environment_);
  plan.titleFromHeading = !options_.title && options_.inputFormat == InputFormat::Markdown;
  plan.contents = options_.contents && options_.inputFormat == InputFormat::Markdown;
  plan.poll = [this] { poll(); };
  plan.progress = [this](std::size_t blocks) { showProgress(blocks); };
  return plan;
}

void Conversion::poll() {
  stopWhenInterrupted();
  for (; notedLines_ < log_.lines().size(); ++notedLines_) {
    for (const auto& output : outputs_) {
      output->noteLogged(log_.lines()[notedLines_]);
    }
  }
}

void Conversion::showProgress(std::size_t blocks) {
  messages_.progress(std::to_string(blocks) + (options_.inputFormat == InputFormat::Markdown ? " blocks" : " rows"));
}

void Conversion::readInput() {
  TextInput input(environment_, options_.input);
  Distributor distributor(outputs_, plan());
  read(input, options_, distributor);
  distributor.finish();
  warnOfReplacements(input.replaced());
}

void Conversion::stopWhenInterrupted() const {
  if (environment_.wasInterrupted()) {
    throw Interrupted();
  }
}

// Finishing a report may take long, be interrupted or run out of memory. No file is therefore replaced before all
// reports are finished and all warnings are known.
void Conversion::finish() {
  for (const auto& output : outputs_) {
    stopWhenInterrupted();
    output->finish();
  }
  stopWhenInterrupted();
}

// Outputs that are not delivered are removed.
void Conversion::deliver() {
  for (const auto& output : outputs_) {
    output->deliver();
    if (output->failed()) {
      messages_.error(output->error());
    }
  }
}

void Conversion::warnOfReplacements(std::size_t count) {
  if (count > 0) {
    messages_.warning("'" + options_.input + "': replaced " + std::to_string(count) + " invalid character" +
                      (count == 1 ? "" : "s") + " with U+FFFD");
  }
}

// The library logs errors that it also returns; the user sees each once. A failed operation is reported in the log
// only, and the outputs lack an unknown part of their content, so it ends the run.
std::vector<std::string> Conversion::loggedWarnings() const {
  std::vector<std::string> texts;
  for (const std::wstring& line : log_.lines()) {
    const std::string text = userMessage(line);
    if (line.starts_with(scrivalen::kOperationFailed)) {
      throw std::runtime_error(text);
    }
    const auto reportsIt = [&](const auto& output) { return output->hasReported(line); };
    const bool isNew = std::find(texts.begin(), texts.end(), text) == texts.end();
    if (isNew && std::none_of(outputs_.begin(), outputs_.end(), reportsIt)) {
      texts.push_back(text);
    }
  }
  return texts;
}

std::string Conversion::userMessage(const std::wstring& line) const {
  for (const auto& output : outputs_) {
    std::string text = output->userMessage(line);
    if (text != toUtf8(line)) {
      return text;
    }
  }
  return toUtf8(line);
}

int runOrThrow(const std::vector<std::string>& arguments, const Environment& environment, Messages& messages) {
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
  const FixedClock clock(environment);
  const LibraryStop stop(environment);
  return Conversion(commandLine.options, environment, messages).run();
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
