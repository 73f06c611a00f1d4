#include "document/pictures/picture_file.h"

#include "system/files/files.h"
#include "system/files/whole_file.h"
#include "system/messages.h"
#include "text/utf.h"

namespace scrivalen::document {
namespace {

// More than any picture of 64 megapixels has.
constexpr std::size_t kMostPictureBytes = std::size_t{1} << 30;

}  // namespace

std::shared_ptr<const Picture> readPictureFile(std::string_view path, std::string& reason) {
  const WholeFile file = readWholeFile(widePath(path), kMostPictureBytes);
  switch (file.problem) {
    case WholeFile::Problem::None: return Picture::read(file.bytes, reason);
    case WholeFile::Problem::SpecialFile: reason = "the file is a device or a pipe"; break;
    case WholeFile::Problem::TooLarge: reason = "the file is larger than 1 GiB"; break;
    case WholeFile::Problem::System: reason = toUtf8(systemErrorText(file.error)); break;
  }
  return nullptr;
}

}  // namespace scrivalen::document
