#pragma once

#include "events/document.h"
#include "formats.h"
#include "output/target_file.h"

#include <memory>
#include <string>

namespace scrivalen::command {

/// One output of a run. It is written to a new file next to its target, which it replaces at the end, so that the
/// target is either complete or untouched. Only a device or a pipe is written to directly. After a failure, all calls
/// do nothing.
class Output {
 public:
  /// @param name  as given on the command line
  Output(const Format& format, std::string name);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  void open(const DocumentSettings& settings);
  /// Does nothing unless the output was opened.
  void write(const Event& event) {
    if (isOpen_ && !failed()) {
      writer_->write(event);
    }
  }
  /// Handles a line of the library's log. If the line reports a write error for this output, the output has failed.
  void noteLogged(std::wstring_view line);
  /// Finishes the document.
  void finish();
  /// Moves the finished document over its target.
  void deliver();

  bool failed() const { return !error_.empty(); }
  const std::string& error() const { return error_; }
  /// Whether its error already says what a line of the library's log says.
  bool hasReported(const std::wstring& line) const;

  /// Replaces internal paths in a message of the library by the name given on the command line.
  std::string userMessage(const std::wstring& message) const;

 private:
  bool isMissingCompiler(std::wstring_view line) const;
  bool isOwnFile(std::wstring_view quotedPath) const;
  std::string withoutPartName(const std::wstring& message, const std::wstring& folder) const;
  std::string withName(const std::string& message) const;
  bool prepareFile();
  void fail(const std::string& error);

  std::string name_;
  std::unique_ptr<scrivalen::TargetFile> target_;  // null for a device
  std::unique_ptr<DocumentWriter> writer_;         // destroyed first: some systems cannot remove an open file
  std::wstring file_;                              // the file that is written to
  std::string error_;
  bool isOpen_ = false;
};

}  // namespace scrivalen::command
