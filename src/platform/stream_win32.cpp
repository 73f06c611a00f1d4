#include "platform/stream.h"

#include "platform/windows_api.h"

#include <io.h>

namespace scrivalen::platform {
namespace {

StreamFile fileOf(int descriptor) {
  BY_HANDLE_FILE_INFORMATION identity{};
  if (descriptor < 0 ||
      !GetFileInformationByHandle(reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor)), &identity)) {
    return {};
  }
  return {descriptor, identity.dwVolumeSerialNumber,
          std::uint64_t{identity.nFileIndexHigh} << 32 | identity.nFileIndexLow};
}

}  // namespace

StreamFile fileOf(std::FILE* stream) { return fileOf(::_fileno(stream)); }

bool isStillOpen(const StreamFile& file) {
  const StreamFile now = fileOf(file.descriptor);
  return now.descriptor >= 0 && now.device == file.device && now.number == file.number;
}

std::optional<std::uint64_t> streamPosition(std::FILE* stream) {
  const auto position = ::_ftelli64(stream);
  return position < 0 ? std::nullopt : std::optional<std::uint64_t>(static_cast<std::uint64_t>(position));
}

}  // namespace scrivalen::platform
