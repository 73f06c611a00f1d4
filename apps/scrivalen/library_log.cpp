#include "library_log.h"

#include <scrivalen/host.h>

namespace scrivalen::command {
namespace {

// The library's handler is a plain function: it finds the log here.
std::vector<std::wstring>* current = nullptr;

}  // namespace

LibraryLog::LibraryLog() {
  current = &lines_;
  SetLogHandler(&LibraryLog::receive);
}

LibraryLog::~LibraryLog() {
  SetLogHandler(nullptr);
  current = nullptr;
}

void LibraryLog::receive(const wchar_t* message) {
  if (current) {
    current->emplace_back(message);
  }
}

}  // namespace scrivalen::command
