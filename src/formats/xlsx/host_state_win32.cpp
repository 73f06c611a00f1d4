#include "formats/xlsx/host_state.h"

#include <fcntl.h>
#include <io.h>

namespace scrivalen {

// A new descriptor is the lowest that is free. Nothing draws random numbers here: see xlsxwriter_files_win32.cpp.
HostState::HostState() {
  for (int stream = 0; stream < kStandardStreams; ++stream) {
    if (::_get_osfhandle(stream) == -1) {
      isTaken_[stream] = ::_open("NUL", _O_RDWR | _O_BINARY | _O_NOINHERIT) == stream;
    }
  }
}

HostState::~HostState() {
  for (int stream = 0; stream < kStandardStreams; ++stream) {
    if (isTaken_[stream]) {
      ::_close(stream);
    }
  }
}

}  // namespace scrivalen
