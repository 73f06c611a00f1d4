#include "library_stop.h"

#include "system/stop.h"

#include <scrivalen/host.h>

namespace scrivalen::command {
namespace {

// The library's handler is a plain function: it finds the host here.
const Host* current = nullptr;

bool isStopWanted() { return current->wasInterrupted(); }

}  // namespace

LibraryStop::LibraryStop(const Host& host) {
  current = &host;
  SetStopHandler(&isStopWanted);
  platform::setStopQuery(&isStopWanted);
}

LibraryStop::~LibraryStop() {
  platform::setStopQuery(nullptr);
  SetStopHandler(nullptr);
  current = nullptr;
}

}  // namespace scrivalen::command
