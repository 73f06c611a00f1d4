#include "scrivalen/output_file.h"

#include "output/exception_barrier.h"
#include "output/failure_reason.h"
#include "output/file_error.h"
#include "output/output_buffer.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "text/fmt.h"

using namespace scrivalen;

OutputFile::OutputFile() = default;
OutputFile::~OutputFile() = default;

struct ReportFile::State : ByteSink {
  State() : buffer(*this) {}

  bool take(const char* data, std::size_t size) override {
    if (!file || !writeError.empty()) {
      return false;
    }
    if (!writeAll(file, data, size)) {
      failBySystemError();
    }
    return writeError.empty();
  }

  void failBySystemError() noexcept {
    containedIn(writeError, [&] { writeError.keep(systemErrorText(lastSystemError())); });
    logFailure();
  }

  void logFailure() noexcept { logFileError(FileError::Write, name, writeError.c_str()); }

  void open(const wchar_t* path) {
    name = path ? path : L"";
    buffer.reset();
    buffer.reserve(1);  // allocates now, so that no write has to
    file = openExclusive(name);
    if (!file) {
      openError.keep(systemErrorText(lastSystemError()));
    }
  }

  File file;
  std::wstring name;
  Reason openError;
  Reason writeError;
  OutputBuffer buffer;
};

ReportFile::ReportFile() {
  contained([this] { state_ = std::make_unique<State>(); });
}

ReportFile::~ReportFile() { Close(); }

bool ReportFile::Open(const wchar_t* name) {
  if (!state_) {
    return false;
  }
  state_->openError.clear();
  if (IsOpen()) {
    state_->openError.keep(kStillOpen);
    return false;
  }
  state_->writeError.clear();
  containedIn(state_->openError, [&] { state_->open(name); });
  return IsOpen();
}

void ReportFile::Write(const void* data, std::size_t size) {
  if (IsOpen()) {
    state_->buffer.write(data, size);
  }
}

std::uint64_t ReportFile::Position() const { return IsOpen() ? state_->buffer.position() : 0; }

bool ReportFile::Flush() { return !IsOpen() || (state_->buffer.flush() && state_->writeError.empty()); }

bool ReportFile::Close() {
  if (!IsOpen()) {
    return true;
  }
  state_->buffer.flush();
  if (!state_->file.close() && state_->writeError.empty()) {
    state_->failBySystemError();
  }
  return state_->writeError.empty();
}

bool ReportFile::IsOpen() const { return state_ && state_->file; }

void* ReportFile::Handle() const { return state_ ? static_cast<NativeFile>(state_->file) : nullptr; }

const wchar_t* ReportFile::Name() const { return state_ ? state_->name.c_str() : L""; }

const wchar_t* ReportFile::Error() const { return state_ ? state_->openError.c_str() : kOutOfMemory; }

const wchar_t* ReportFile::WriteError() const { return state_ ? state_->writeError.c_str() : L""; }

OutputBuffer* scrivalen::bufferOf(ReportFile& file) { return file.IsOpen() ? &file.state_->buffer : nullptr; }

void scrivalen::giveUp(ReportFile& file, const wchar_t* reason) {
  if (file.IsOpen() && file.state_->writeError.empty()) {
    file.state_->writeError.keep(reason);
    file.state_->logFailure();
  }
}
