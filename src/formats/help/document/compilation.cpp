#include "formats/help/document/compilation.h"

#include "document/run.h"
#include "formats/help/document/page_file.h"
#include "formats/help/document/project.h"
#include "formats/help/help_compiler.h"
#include "formats/help/help_project.h"
#include "output/host_handlers.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "system/process/process.h"
#include "text/utf.h"

#include <cstddef>
#include <new>
#include <utility>

namespace scrivalen::help {
namespace {

using document::WarningCode;

// Asks the host whether to go on. An exception must not leave the compiler alone: it is raised again afterwards.
class Question {
 public:
  explicit Question(document::Run* run) : run_(run) {}

  bool isToStop() noexcept {
    try {
      isStopped_ = isStopped_ || isOutOfMemory_ || !run_->report();
    } catch (const std::bad_alloc&) {
      isOutOfMemory_ = true;
    }
    return isStopped_ || isOutOfMemory_;
  }

  /// @return whether the host has cancelled
  bool result() const {
    if (isOutOfMemory_) {
      throw std::bad_alloc();
    }
    return isStopped_;
  }

 private:
  document::Run* const run_;
  bool isStopped_ = false;
  bool isOutOfMemory_ = false;
};

std::string exitText(const ProcessResult& run) {
  return run.signal != 0 ? "It was ended by signal " + std::to_string(run.signal) + '.'
                         : "It ended with status " + std::to_string(run.exitStatus) + '.';
}

[[noreturn]] void raiseNotStarted(const ProcessResult& run) {
  if (isOutOfMemoryError(run.error)) {
    throw std::bad_alloc();
  }
  throw ProjectFailure("the help compiler could not be started: " + toUtf8(run.commandLine) + ' ' +
                       toUtf8(systemErrorText(run.error)) + ' ' + toUtf8(formats::helpCompilerAdvice()));
}

// The compiler's last message says why it gave up.
[[noreturn]] void raiseNoHelpFile(const ProcessResult& run) {
  std::string reason = "the help compiler left no help file. " + exitText(run);
  if (!run.messages.empty()) {
    reason.append(" ").append(toUtf8(run.messages.back()));
  }
  throw ProjectFailure(reason);
}

}  // namespace

bool compile(const std::wstring& folder, const document::WriterContext& context) {
  Question question(context.run);
  ProcessSetup setup{folder, nullptr};
  if (context.run && context.run->hasProgress()) {
    setup.isToStop = [&question] { return question.isToStop(); };
  }
  const ProcessResult run = runProgram({formats::helpCompiler(homePath()), toWide(kProjectName)},
                                       {L"SOURCE_DATE_EPOCH=" + std::to_wstring(context.settings.clock())}, setup);
  if (question.result()) {
    return false;
  }
  if (!run.started) {
    raiseNotStarted(run);
  }
  if (!pathExists(folder + kPathSeparator + toWide(kCompiledName))) {
    raiseNoHelpFile(run);
  }
  for (const std::wstring& message : run.messages) {
    context.warnings.add(WarningCode::SomethingLeftOut, "the help compiler: " + toUtf8(message));
  }
  return true;
}

}  // namespace scrivalen::help
