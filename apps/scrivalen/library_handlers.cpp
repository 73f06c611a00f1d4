#include "library_handlers.h"

#include "system/process/stop.h"

#include <scrivalen/host.h>

namespace scrivalen::command {
namespace {

// The handlers are plain functions and take no context pointer.
const Environment* currentEnvironment = nullptr;

bool isStopWanted() { return currentEnvironment->wasInterrupted(); }

}  // namespace

LibraryHandlers::LibraryHandlers(const Environment& environment) {
  currentEnvironment = &environment;
  SetStopHandler(&isStopWanted);
  SetLogHandler([](const wchar_t*) {});
  SetErrorBoxHandler([](const wchar_t*, const wchar_t*) {});
  scrivalen::setStopQuery(&isStopWanted);
}

LibraryHandlers::~LibraryHandlers() {
  scrivalen::setStopQuery(nullptr);
  SetErrorBoxHandler(nullptr);
  SetLogHandler(nullptr);
  SetStopHandler(nullptr);
  currentEnvironment = nullptr;
}

}  // namespace scrivalen::command
