#include "library_stop.h"

#include "system/process/stop.h"

#include <scrivalen/host.h>

namespace scrivalen::command {
namespace {

// The library's handler is a plain function: it finds the host here.
const Host* interruptedHost = nullptr;

bool isStopWanted() { return interruptedHost->wasInterrupted(); }

}  // namespace

LibraryStop::LibraryStop(const Host& host) {
  interruptedHost = &host;
  SetStopHandler(&isStopWanted);
  scrivalen::setStopQuery(&isStopWanted);
}

LibraryStop::~LibraryStop() {
  scrivalen::setStopQuery(nullptr);
  SetStopHandler(nullptr);
  interruptedHost = nullptr;
}

}  // namespace scrivalen::command
