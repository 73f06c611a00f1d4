#include "writing/document_run.h"

#include "digits.h"
#include "errors.h"
#include "system/files/files.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <new>
#include <utility>

namespace scrivalen::command {
namespace {

// Nothing if the file has no size, or if that cannot be found out any more.
std::optional<std::uint64_t> sizeOfFile(const std::string& name) {
  try {
    const std::wstring path = scrivalen::widePath(name);
    const scrivalen::File file = scrivalen::isSpecialFile(path) ? scrivalen::File() : scrivalen::openForReading(path);
    return file ? scrivalen::sizeOf(file) : std::nullopt;
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

// Where nothing similar is known, the list of settings helps.
std::string settingError(const std::string& error) {
  const bool isUnknown = error.starts_with("There is no setting") && error.find("Did you mean") == std::string::npos;
  return isUnknown ? error + " The documentation, in settings.md, lists them." : error;
}

// The name of the setting that shows the title of another, for all formats or for one; empty if the other is no title.
std::string settingThatShows(const std::string& name) {
  const std::size_t format = name.find('.') + 1;
  const bool isProperty = name.starts_with("property:");
  return !isProperty && name.substr(format) == "title" ? name.substr(0, format) + "show-title" : std::string();
}

void requireSeconds(const std::string& text) {
  std::int64_t seconds = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, seconds);
  if (result.ec != std::errc() || result.ptr != end || seconds < 0) {
    throw UsageError("SOURCE_DATE_EPOCH is not a number of seconds: '" + text + "'");
  }
}

}  // namespace

DocumentRun::DocumentRun(const Options& options, const Job& job, std::vector<const OutputRequest*> outputs,
                         const Environment& environment, Messages& messages)
    : options_(options),
      job_(job),
      outputs_(std::move(outputs)),
      environment_(environment),
      messages_(messages),
      document_(scrivalen_new()) {
  if (!document_) {
    throw std::bad_alloc();
  }
  addOutputs();
  applySettings();
}

void DocumentRun::addOutputs() {
  for (const OutputRequest* const output : outputs_) {
    switch (addOutput(*output)) {
      case SCRIVALEN_OK: break;
      case SCRIVALEN_OUT_OF_MEMORY: throw std::bad_alloc();
      default: throw UsageError(scrivalen_error(document_.get()));
    }
  }
  const auto progress = [](void* run, std::uint64_t, std::uint64_t) {
    return static_cast<DocumentRun*>(run)->environment_.wasInterrupted() ? 1 : 0;
  };
  scrivalen_set_progress(document_.get(), progress, this);
}

scrivalen_status DocumentRun::addOutput(const OutputRequest& output) {
  if (output.name != "-") {
    return scrivalen_add_file(document_.get(), output.name.c_str(), output.format->name);
  }
  const auto writeOutput = [](void* run, const void* data, std::size_t size) {
    errno = 0;
    DocumentRun& self = *static_cast<DocumentRun*>(run);
    if (self.environment_.writeOutput({static_cast<const char*>(data), size})) {
      self.streamed_ += size;
      return 0;
    }
    return errno != 0 ? errno : EIO;
  };
  return scrivalen_add_stream(document_.get(), output.format->name, writeOutput, this);
}

// SOURCE_DATE_EPOCH makes equal inputs give equal bytes (reproducible-builds.org).
void DocumentRun::applySettings() {
  if (const auto time = environment_.variable("SOURCE_DATE_EPOCH"); time && !time->empty()) {
    requireSeconds(*time);
    set("clock", *time);
  }
  if (!options_.templateFile.empty()) {
    set("html.template", options_.templateFile);
  }
  if (!options_.stylesFile.empty()) {
    set("xlsx.styles", options_.stylesFile);
  }
  if (!options_.referenceFile.empty()) {
    set("docx.reference", options_.referenceFile);
  }
  if (!options_.separator.empty()) {
    set("text.separator", options_.separator);
  }
  if (options_.singleByte) {
    set("text.encoding", "latin-1");
  }
  if (options_.landscape) {
    set("landscape", "yes");
  }
  for (const auto& [name, value] : options_.properties) {
    set(("property:" + name).c_str(), value);
  }
}

void DocumentRun::set(const char* name, const std::string& value) {
  switch (scrivalen_set(document_.get(), name, value.c_str())) {
    case SCRIVALEN_OK: break;
    case SCRIVALEN_OUT_OF_MEMORY: throw std::bad_alloc();
    default: throw UsageError(settingError(scrivalen_error(document_.get())));
  }
  rememberSetting(name, value);
}

void DocumentRun::rememberSetting(std::string_view name, std::string_view value) {
  if (messages_.isVerbose()) {
    settings_.append(settings_.empty() ? "" : ", ").append(name).append("='").append(value).append("'");
  }
}

void DocumentRun::applyGivenSettings() {
  for (const auto& [name, value] : options_.settings) {
    set(name.c_str(), value);
  }
}

// As with --title, somebody wants to see it, unless other settings say so or not.
void DocumentRun::showGivenTitles() {
  const auto isGiven = [this](const std::string& name) {
    return std::any_of(options_.settings.begin(), options_.settings.end(),
                       [&name](const auto& setting) { return setting.first == name; });
  };
  for (const auto& [name, value] : options_.settings) {
    const std::string show = settingThatShows(name);
    if (!show.empty() && !isGiven(show) && !isGiven("show-title")) {
      set(show.c_str(), "yes");
    }
  }
}

void DocumentRun::setOfInput(const char* name, const std::string& value) {
  const scrivalen_status status = scrivalen_set(document_.get(), name, value.c_str());
  if (status == SCRIVALEN_OUT_OF_MEMORY) {
    throw std::bad_alloc();
  }
  if (status != SCRIVALEN_OK) {
    warnings_.push_back("'" + job_.input + "': " + scrivalen_error(document_.get()));
    return;
  }
  rememberSetting(name, value);
}

void DocumentRun::open(const std::string& title, bool isShown,
                       const std::vector<std::pair<std::string, std::string>>& ofInput) {
  set("title", title);
  set("show-title", isShown ? "yes" : "no");
  for (const auto& [name, value] : ofInput) {
    setOfInput(name.c_str(), value);
  }
  applyGivenSettings();
  showGivenTitles();
  stopWhenInterrupted();
  scrivalen_open(document_.get());
  noteSettings();
}

void DocumentRun::write(DocumentStream::Plan plan, const std::function<void(TableSink&)>& read) {
  plan.input = job_.input;
  plan.poll = [this] { stopWhenInterrupted(); };
  plan.progress = [this](std::size_t blocks) { showProgress(blocks); };
  DocumentStream stream(document_.get(), std::move(plan));
  try {
    read(stream);
  } catch (const NoOutputLeft&) {
    // Each output has its own error.
  }
  for (std::string& warning : stream.warnings()) {
    warnings_.push_back(std::move(warning));
  }
}

void DocumentRun::close() {
  stopWhenInterrupted();
  const scrivalen_status status = scrivalen_close(document_.get());
  if (status == SCRIVALEN_OUT_OF_MEMORY) {
    throw std::bad_alloc();
  }
  // The signal may have reached the help compiler first, whose failure is then not worth a word.
  if (status != SCRIVALEN_OK) {
    stopWhenInterrupted();
  }
}

void DocumentRun::showProgress(std::size_t blocks) {
  messages_.progress(std::to_string(blocks) + (job_.format == InputFormat::Markdown ? " blocks" : " rows"));
}

void DocumentRun::stopWhenInterrupted() const {
  if (environment_.wasInterrupted()) {
    throw Interrupted();
  }
}

// The outputs are in their places, so nothing here may need memory that might run out.
bool DocumentRun::report(Warnings warnings) {
  bool isGood = true;
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    if (scrivalen_output_result(document_.get(), i) != SCRIVALEN_OK) {
      reportFailure(i);
      isGood = false;
    } else {
      noteOutput(i);
    }
  }
  const bool isInputShown = warnings == Warnings::OfInputAndOutputs;
  if (isInputShown) {
    for (const std::string& warning : warnings_) {
      messages_.warning(warning);
    }
  }
  scrivalen_warning warning{};
  warning.size = sizeof warning;
  while (scrivalen_next_warning(document_.get(), &warning) != 0) {
    if ((isInputShown && !isOfRows(warning)) || !isOfInput(warning)) {
      warnOf(warning);
    }
  }
  return isGood;
}

// The library knows streams by their formats only.
void DocumentRun::reportFailure(std::size_t output) {
  constexpr std::string_view kStart = "cannot write the stream of ";
  const std::string_view error = scrivalen_output_error(document_.get(), output);
  const std::size_t colon = error.find(':');
  if (outputs_[output]->name == "-" && error.starts_with(kStart) && colon != error.npos) {
    messages_.error({"cannot write to standard output", error.substr(colon)});
  } else {
    messages_.error(error);
  }
}

// Whether a warning counts rows with too few cells. The reader of CSV knows their lines, and warns itself.
bool DocumentRun::isOfRows(const scrivalen_warning& warning) const {
  return job_.format != InputFormat::Markdown && std::string_view(warning.message).starts_with("rows with fewer cells");
}

void DocumentRun::noteSettings() {
  std::string names;
  for (const OutputRequest* const output : outputs_) {
    names.append(names.empty() ? "'" : ", '").append(output->name).append("'");
  }
  messages_.note({"settings of ", names, ": ", settings_});
}

void DocumentRun::noteOutput(std::size_t output) {
  if (!messages_.isVerbose()) {
    return;
  }
  const OutputRequest& request = *outputs_[output];
  const auto size = request.name == "-" ? std::optional<std::uint64_t>(streamed_) : sizeOfFile(request.name);
  const Digits digits(size.value_or(0));
  messages_.note({"wrote '", request.name, "' as ", request.format->name, size ? ": " : "",
                  size ? digits.text() : std::string_view(), size ? " bytes" : ""});
}

void DocumentRun::warnOf(const scrivalen_warning& warning) {
  const bool isOnInput = isOfInput(warning);
  const std::string& name = isOnInput ? job_.input : outputs_[warning.output]->name;
  const bool isStandardOutput = !isOnInput && name == "-";
  const std::string_view quote = isStandardOutput ? "" : "'";
  const Digits count(warning.count);
  const bool isCounted = warning.count > 1;
  messages_.warning({quote, isStandardOutput ? "standard output" : std::string_view(name), quote, ": ", warning.message,
                     isCounted ? " (" : "", isCounted ? count.text() : std::string_view(), isCounted ? ")" : ""});
}

}  // namespace scrivalen::command
