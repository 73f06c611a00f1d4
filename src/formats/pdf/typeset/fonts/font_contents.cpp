#include "formats/pdf/typeset/fonts/font_contents.h"

#include "system/files/files.h"
#include "system/messages.h"
#include "text/utf.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

namespace scrivalen::typeset {
namespace {

// More than any font has.
constexpr std::size_t kMostFontBytes = std::size_t{1} << 28;

}  // namespace

std::string readFontFile(const std::wstring& path, std::string& reason) {
  reason.clear();
  // Opening a pipe may wait without end.
  if (isSpecialFile(path)) {
    reason = "it is a device or a pipe";
    return {};
  }
  std::string contents;
  const File file = openForReading(path);
  bool isTooLong = false;
  const bool isRead = file && readRest(file, [&](std::string_view part) {
                        isTooLong = part.size() > kMostFontBytes - contents.size();
                        if (!isTooLong) {
                          contents += part;
                        }
                        return !isTooLong;
                      });
  if (!isRead) {
    const std::uint32_t error = lastSystemError();
    if (!isTooLong && isOutOfMemoryError(error)) {
      throw std::bad_alloc();
    }
    reason = isTooLong ? "it is larger than 256 MiB" : toUtf8(systemErrorText(error));
    contents.clear();
  }
  return contents;
}

}  // namespace scrivalen::typeset
