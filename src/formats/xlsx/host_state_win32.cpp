#include "formats/xlsx/host_state.h"

#include <clocale>

#include <fcntl.h>
#include <io.h>
#include <locale.h>

namespace scrivalen {

// Most programs never leave the C locale, and then there is nothing to do.
CLocale::CLocale() {
  const std::string name = std::setlocale(LC_ALL, nullptr);
  if (name != "C") {
    name_ = name;
    before_ = ::_configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
    std::setlocale(LC_ALL, "C");
  }
}

CLocale::~CLocale() {
  if (!name_.empty()) {
    std::setlocale(LC_ALL, name_.c_str());
    ::_configthreadlocale(static_cast<int>(before_));
  }
}

// A new descriptor is the lowest free one. Nothing draws random numbers here: see xlsxwriter_files_win32.cpp.
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
