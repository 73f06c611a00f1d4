#include "formats/xlsx/stream.h"

#include "system/windows_api.h"

#include <io.h>

namespace scrivalen {
namespace {

bool identityOf(int descriptor, BY_HANDLE_FILE_INFORMATION& identity) {
  return descriptor >= 0 &&
         GetFileInformationByHandle(reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor)), &identity);
}

}  // namespace

StreamWatch::StreamWatch(std::FILE* stream) : descriptor_(::_fileno(stream)), duplicate_(::_dup(descriptor_)) {}

StreamWatch::~StreamWatch() {
  if (duplicate_ >= 0) {
    ::_close(duplicate_);
  }
}

bool StreamWatch::isOpen() const {
  BY_HANDLE_FILE_INFORMATION now{};
  BY_HANDLE_FILE_INFORMATION own{};
  return identityOf(descriptor_, now) && identityOf(duplicate_, own) &&
         now.dwVolumeSerialNumber == own.dwVolumeSerialNumber && now.nFileIndexHigh == own.nFileIndexHigh &&
         now.nFileIndexLow == own.nFileIndexLow;
}

std::optional<std::uint64_t> streamPosition(std::FILE* stream) {
  const auto position = ::_ftelli64(stream);
  return position < 0 ? std::nullopt : std::optional<std::uint64_t>(static_cast<std::uint64_t>(position));
}

}  // namespace scrivalen
