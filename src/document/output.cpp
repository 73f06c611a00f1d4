#include "document/output.h"

#include "document/stream_error.h"
#include "system/messages.h"
#include "system/process/write_signals.h"
#include "text/utf.h"

#include <cerrno>
#include <new>
#include <utility>

namespace scrivalen::document {

Output::Output(const Format& format, std::string path, std::size_t index, const Settings& settings, Warnings& warnings,
               Run& run)
    : format_(format),
      run_(run),
      path_(std::move(path)),
      buffer_(*this),
      settings_(settings, format.name),
      warnings_(warnings, index) {}

Output::Output(const Format& format, StreamWrite stream, void* user, std::size_t index, const Settings& settings,
               Warnings& warnings, Run& run)
    : Output(format, std::string(), index, settings, warnings, run) {
  stream_ = stream;
  user_ = user;
}

Output::~Output() { abandon(); }

void Output::open() {
  isLive_ = true;
  run_.countOutput();
  guarded([&] {
    if (!stream_) {
      openFile();
    }
    if (isLive_) {
      writer_ = format_.create({buffer_, settings_, warnings_, &run_});
      writer_->begin();
    }
  });
}

bool Output::sharesTargetWith(const Output& other) const {
  if (stream_ || other.stream_) {
    return false;
  }
  const std::wstring path = widePath(path_);
  const std::wstring otherPath = widePath(other.path_);
  return !isSpecialFile(path) &&
         (isSameFile(path, otherPath) || isSamePath(resolvedPath(path), resolvedPath(otherPath)));
}

void Output::openFile() {
  const std::wstring path = widePath(path_);
  if (isSpecialFile(path)) {
    newFile_ = path;
    file_ = openExclusive(path);
  } else if (isFolder(path)) {
    return fail(Status::FileError, cannotWrite("it is a folder"));
  } else if (isOpenFilesName(path)) {
    // A file that a shell redirected to may have content already, so it must not be replaced.
    return fail(Status::FileError,
                cannotWrite(pathExists(path) ? "it leads to a file; give that file's name" : "it is closed"));
  } else if (isReadOnly(path)) {
    return fail(Status::FileError, cannotWrite("it is read-only"));
  } else {
    prepareTarget(path);
  }
  if (isLive_ && !file_) {
    failToWrite();
  }
}

void Output::prepareTarget(const std::wstring& path) {
  target_ = std::make_unique<TargetFile>();
  if (target_->prepare(path)) {
    newFile_ = target_->newFile();
    file_ = createNew(newFile_);
  }
}

void Output::beginContent(bool isTitled) {
  if (std::exchange(hasContent_, true) || isTitled) {
    return;
  }
  if (const std::string_view title = settings_.text("title"); !title.empty() && settings_.flag("show-title")) {
    write({.kind = EventKind::Title, .text = title});
  }
}

void Output::finish() {
  if (!isLive_ || run_.isCancelled()) {
    return;
  }
  guarded([&] {
    writer_->finish();
    buffer_.flush();
    if (isLive_ && !file_.close()) {
      failToWrite();
    }
  });
}

// Memory that runs out here fails this output only: others may be in their places already.
void Output::deliver() {
  if (isLive_ && target_) {
    try {
      guarded([&] {
        if (!target_->replaceBy(newFile_)) {
          failToWrite();
        }
      });
    } catch (const std::bad_alloc&) {
      result_ = Status::OutOfMemory;
      run_.keepOutOfMemory();
    }
  }
  abandon();
}

void Output::abandon() noexcept {
  stop();
  writer_.reset();
}

void Output::stop() noexcept {
  if (std::exchange(isLive_, false)) {
    run_.discountOutput();
  }
  file_.close();
  target_.reset();
}

Status Output::result() const {
  if (result_ != Status::Ok) {
    return result_;
  }
  if (run_.isOutOfMemory()) {
    return Status::OutOfMemory;
  }
  return run_.isCancelled() ? Status::Cancelled : Status::Ok;
}

const char* Output::error() const {
  if (result_ != Status::Ok && result_ != Status::OutOfMemory) {
    return error_.c_str();
  }
  if (result_ == Status::OutOfMemory || run_.isOutOfMemory()) {
    return kNoMemory;
  }
  return run_.isCancelled() ? kCancelled : "";
}

// The bytes count before the host hears of them.
bool Output::take(const char* data, std::size_t size) {
  if (!isLive_ || run_.isCancelled() || run_.isOutOfMemory() || !store(data, size)) {
    return false;
  }
  run_.countBytes(size);
  return run_.report();
}

bool Output::store(const char* data, std::size_t size) {
  if (!stream_) {
    const WriteSignalsBlocked noSignals;
    if (!writeAll(file_, data, size)) {
      failToWrite();
    }
    return isLive_;
  }
  int error = 0;
  {
    const Run::Callback callback(run_);
    try {
      error = stream_(user_, data, size);
    } catch (...) {
      error = EIO;
    }
  }
  if (error != 0) {
    fail(Status::FileError, cannotWrite(streamErrorText(error)));
  }
  return isLive_;
}

void Output::fail(Status status, const std::string& text) {
  if (result_ == Status::Ok) {
    error_ = text;
    result_ = status;
    run_.fail(status, text);
  }
  stop();
}

// Calls that do not throw report that memory ran out as an error of the system.
void Output::failToWrite() {
  const std::uint32_t error = lastSystemError();
  if (isOutOfMemoryError(error)) {
    throw std::bad_alloc();
  }
  fail(Status::FileError, cannotWrite(toUtf8(systemErrorText(error))));
}

std::string Output::cannotWrite(const std::string& reason) const {
  const std::string what = stream_ ? "the stream of " + std::string(format_.name)
                                   : std::string("'").append(toUtf8(widePath(path_))).append("'");
  return "cannot write " + what + ": " + reason;
}

}  // namespace scrivalen::document
