#include "formats/xlsx/host_state.h"

#include <cstdlib>

#include <fcntl.h>
#include <locale.h>
#include <unistd.h>

namespace scrivalen {
namespace {

locale_t cLocale() {
  static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
  return locale;
}

}  // namespace

CLocale::CLocale() : before_(reinterpret_cast<std::intptr_t>(::uselocale(cLocale()))) {}

CLocale::~CLocale() { ::uselocale(reinterpret_cast<locale_t>(before_)); }

// A new descriptor is the lowest free one.
HostState::HostState() {
  for (int stream = 0; stream < kStandardStreams; ++stream) {
    if (::fcntl(stream, F_GETFD) < 0) {
      isTaken_[stream] = ::open("/dev/null", O_RDWR | O_CLOEXEC) == stream;
    }
  }
  hostsRandomState_ = ::initstate(1, randomState_, kRandomState);
}

HostState::~HostState() {
  ::setstate(hostsRandomState_);
  for (int stream = 0; stream < kStandardStreams; ++stream) {
    if (isTaken_[stream]) {
      ::close(stream);
    }
  }
}

}  // namespace scrivalen
