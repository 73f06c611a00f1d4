#pragma once

#include "document/document.h"
#include "formats.h"
#include "output/target_file.h"

#include <memory>
#include <string>

namespace scrivalen::command {

/// One output of a run. It is written beside its target and moved over it at the end, so that the target is whole or
/// untouched; only a device or a pipe is written to directly. Once something failed, nothing more happens to it.
class Output {
 public:
  /// @param name  as the person gave it
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
  /// Takes a line that the library has logged: when it says that what is written here does not reach the file, the
  /// output has failed.
  void noteLogged(std::wstring_view line);
  /// Finishes the document.
  void finish();
  /// Moves the finished document over its target.
  void deliver();

  bool failed() const { return !error_.empty(); }
  const std::string& error() const { return error_; }
  /// Whether its error says this already.
  bool hasReported(std::string_view text) const;

  /// A message of the library with the name that the person knows.
  std::string userMessage(const std::wstring& message) const;

 private:
  bool isOwnFile(std::wstring_view quotedPath) const;
  std::string withoutPartName(const std::wstring& message, const std::wstring& folder) const;
  std::string withName(const std::string& message) const;
  bool prepareFile();
  void fail(const std::string& error);

  std::string name_;
  std::unique_ptr<scrivalen::TargetFile> target_;  // null for a device
  std::unique_ptr<DocumentWriter> writer_;         // goes first: some systems do not remove a file that is open
  std::wstring file_;                              // what is written to
  std::string error_;
  bool isOpen_ = false;
};

}  // namespace scrivalen::command
