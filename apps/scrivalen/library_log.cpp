#include "library_log.h"

#include <scrivalen/host.h>

#include <new>

namespace scrivalen::command {
namespace {

// The library's handler is a plain function: it finds the log here.
LibraryLog* current = nullptr;

}  // namespace

LibraryLog::LibraryLog() {
  current = this;
  SetLogHandler(&LibraryLog::receive);
}

LibraryLog::~LibraryLog() {
  SetLogHandler(nullptr);
  current = nullptr;
}

const std::vector<std::wstring>& LibraryLog::lines() const {
  if (!isComplete_) {
    throw std::bad_alloc();
  }
  return lines_;
}

void LibraryLog::receive(const wchar_t* message) {
  try {
    if (current) {
      current->lines_.emplace_back(message);
    }
  } catch (const std::bad_alloc&) {
    current->isComplete_ = false;
  }
}

}  // namespace scrivalen::command
