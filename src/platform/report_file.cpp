#include "scrivalen/output_file.h"

#include "platform/clog.h"
#include "platform/contain.h"
#include "platform/files.h"
#include "platform/fmt.h"
#include "platform/output_buffer.h"
#include "platform/system_error.h"

#include <exception>

using namespace scrivalen::platform;

OutputFile::OutputFile() = default;
OutputFile::~OutputFile() = default;

struct ReportFile::State : ByteSink {
  State() : buffer(*this) {}

  bool take(const char* data, std::size_t size) override {
    if (!file || writeAll(file, data, size)) {
      return file != nullptr;
    }
    rememberLoss();
    return false;
  }

  void rememberLoss() noexcept {
    contained([&] {
      CLog::FormatLastError(writeError);
      CLog::Bug2(FMT::Format(L"File write error for '%s'. %s", name, writeError));
    });
  }

  NativeFile file = nullptr;
  std::wstring name;
  std::wstring openError;
  std::wstring writeError;
  OutputBuffer buffer;
};

ReportFile::ReportFile() : state_(std::make_unique<State>()) {}

ReportFile::~ReportFile() { Close(); }

bool ReportFile::Open(const wchar_t* name) {
  if (IsOpen()) {
    state_->openError = L"The report is still open.";
    return false;
  }
  state_->name = name ? name : L"";
  state_->openError.clear();
  state_->writeError.clear();
  state_->buffer.reset();
  state_->buffer.room(1);  // so that no write has to ask for memory
  state_->file = openExclusive(state_->name);
  if (!IsOpen()) {
    CLog::FormatLastError(state_->openError);
  }
  return IsOpen();
}

void ReportFile::Write(const void* data, std::size_t size) {
  if (IsOpen()) {
    state_->buffer.write(data, size);
  }
}

std::uint64_t ReportFile::Position() const { return IsOpen() ? state_->buffer.position() : 0; }

bool ReportFile::Flush() { return !IsOpen() || state_->buffer.flush(); }

bool ReportFile::Close() {
  if (!IsOpen()) {
    return true;
  }
  const bool flushed = state_->buffer.flush();
  const bool closed = closeFile(state_->file);
  if (flushed && !closed) {
    state_->rememberLoss();
  }
  state_->file = nullptr;
  return flushed && closed;
}

bool ReportFile::IsOpen() const { return state_->file != nullptr; }

void* ReportFile::Handle() const { return state_->file; }

const wchar_t* ReportFile::Name() const { return state_->name.c_str(); }

const wchar_t* ReportFile::Error() const { return state_->openError.c_str(); }

const wchar_t* ReportFile::WriteError() const { return state_->writeError.c_str(); }

OutputBuffer* scrivalen::platform::bufferOf(ReportFile& file) { return file.IsOpen() ? &file.state_->buffer : nullptr; }
