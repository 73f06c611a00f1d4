#include "document/pictures/picture_file.h"

#include "system/files/files.h"
#include "system/messages.h"
#include "text/utf.h"

namespace scrivalen::document {
namespace {

// More than any picture of 64 megapixels has, so that a device that never ends does not fill the memory.
constexpr std::size_t kMostPictureBytes = std::size_t{1} << 30;

}  // namespace

std::shared_ptr<const Picture> readPictureFile(std::string_view path, std::string& reason) {
  const File file = openForReading(widePath(path));
  if (!file) {
    reason = toUtf8(systemErrorText(lastSystemError()));
    return nullptr;
  }
  std::string bytes;
  bool isTooLong = false;
  const bool isRead = readRest(file, [&](std::string_view piece) {
    isTooLong = piece.size() > kMostPictureBytes - bytes.size();
    if (!isTooLong) {
      bytes += piece;
    }
    return !isTooLong;
  });
  if (!isRead) {
    reason = isTooLong ? "the file is larger than 1 GiB" : toUtf8(systemErrorText(lastSystemError()));
    return nullptr;
  }
  return Picture::read(bytes, reason);
}

}  // namespace scrivalen::document
