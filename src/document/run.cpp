#include "document/run.h"

namespace scrivalen::document {

// An exception of the host, in a language that has them, counts as its wish to stop.
bool Run::report() {
  if (progress_ && !isCancelled_) {
    const Callback callback(*this);
    try {
      isCancelled_ = progress_(user_, rows_, bytes_) != 0;
    } catch (...) {
      isCancelled_ = true;
    }
  }
  if (isCancelled_) {
    fail(Status::Cancelled, kCancelled);
  }
  return !isCancelled_;
}

void Run::fail(Status status, const std::string& text) {
  if (result_ == Status::Ok) {
    text_ = text;
    result_ = status;
  }
}

void Run::runOutOfMemory() noexcept {
  isOutOfMemory_ = true;
  keepOutOfMemory();
}

void Run::keepOutOfMemory() noexcept {
  if (result_ == Status::Ok) {
    result_ = Status::OutOfMemory;
  }
}

const char* Run::text() const { return result_ == Status::OutOfMemory ? kNoMemory : text_.c_str(); }

}  // namespace scrivalen::document
