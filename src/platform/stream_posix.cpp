#include "platform/stream.h"

#include <sys/stat.h>
#include <sys/types.h>

namespace scrivalen::platform {
namespace {

StreamFile fileOf(int descriptor) {
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) {
    return {};
  }
  return {descriptor, status.st_dev, status.st_ino};
}

}  // namespace

StreamFile fileOf(std::FILE* stream) { return fileOf(::fileno(stream)); }

bool isStillOpen(const StreamFile& file) {
  const StreamFile now = fileOf(file.descriptor);
  return now.descriptor >= 0 && now.device == file.device && now.number == file.number;
}

std::optional<std::uint64_t> streamPosition(std::FILE* stream) {
  const off_t position = ::ftello(stream);
  return position < 0 ? std::nullopt : std::optional<std::uint64_t>(static_cast<std::uint64_t>(position));
}

}  // namespace scrivalen::platform
