#pragma once

#include "environment.h"
#include "messages.h"
#include "options/options.h"
#include "writing/document_stream.h"

#include <scrivalen/document.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::command {

/// One document of the library: the outputs that take the same content, from the options to the messages about them.
class DocumentRun {
 public:
  /// @param outputs  of the job, like all references not owned; they must outlive this object
  DocumentRun(const Options& options, const Job& job, std::vector<const OutputRequest*> outputs,
              const Environment& environment, Messages& messages);
  DocumentRun(const DocumentRun&) = delete;
  DocumentRun& operator=(const DocumentRun&) = delete;

  /// Sets what --set has. Raises UsageError.
  void applyGivenSettings();
  /// Creates the outputs. One that cannot be created has failed, and the others go on.
  /// @param title    of the document's properties
  /// @param isShown  whether readers see it above a text that does not begin with a heading
  /// @param ofInput  settings that the input gives itself, names and values; those of the options override them, and a
  ///                 value that cannot be used becomes a warning
  void open(const std::string& title, bool isShown, const std::vector<std::pair<std::string, std::string>>& ofInput);
  /// Calls @p read with the document. Once no output is left, or when the user interrupts the run, it does not return
  /// to @p read.
  void write(DocumentStream::Plan plan, const std::function<void(TableSink&)>& read);
  /// Completes the outputs and delivers them.
  void close();
  enum class Warnings : bool { OfOutputs, OfInputAndOutputs };

  /// Shows why outputs failed, then what they lack.
  /// @return whether all outputs were delivered
  bool report(Warnings warnings);

 private:
  struct Free {
    void operator()(scrivalen_document* document) const { scrivalen_free(document); }
  };

  void addOutputs();
  scrivalen_status addOutput(const OutputRequest& output);
  void applySettings();
  void set(const char* name, const std::string& value);
  void showGivenTitles();
  void setOfInput(const char* name, const std::string& value);
  void showProgress(std::size_t blocks);
  void stopWhenInterrupted() const;
  bool isOfRows(const scrivalen_warning& warning) const;
  void rememberSetting(std::string_view name, std::string_view value);
  void noteSettings();
  void noteOutput(std::size_t output);
  void reportFailure(std::size_t output);
  void warnOf(const scrivalen_warning& warning);
  bool isOfInput(const scrivalen_warning& warning) const { return warning.output >= outputs_.size(); }

  const Options& options_;
  const Job& job_;
  std::vector<const OutputRequest*> outputs_;
  const Environment& environment_;
  Messages& messages_;
  std::unique_ptr<scrivalen_document, Free> document_;
  std::vector<std::string> warnings_;  // of the input
  std::string settings_;               // those set so far
  std::size_t streamed_ = 0;           // bytes on standard output
};

}  // namespace scrivalen::command
