#include "document/pictures/picture_file.h"

#include "system/files/files.h"
#include "system/messages.h"
#include "text/utf.h"

namespace scrivalen::document {
namespace {

// More than any picture of 64 megapixels has.
constexpr std::size_t kMostPictureBytes = std::size_t{1} << 30;

}  // namespace

std::shared_ptr<const Picture> readPictureFile(std::string_view path, std::string& reason) {
  const std::wstring wide = widePath(path);
  // Opening a pipe may wait without end.
  if (isSpecialFile(wide)) {
    reason = "the file is a device or a pipe";
    return nullptr;
  }
  const File file = openForReading(wide);
  if (!file) {
    reason = toUtf8(systemErrorText(lastSystemError()));
    return nullptr;
  }
  std::string bytes;
  // A pipe that was put in place of the file has no size.
  bool isTooLong = sizeOf(file).value_or(0) > kMostPictureBytes;
  const bool isRead = !isTooLong && readRest(file, [&](std::string_view piece) {
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
