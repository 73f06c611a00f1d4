#include "formats/pdf/typeset/fonts/font_contents.h"

#include "system/files/whole_file.h"
#include "system/messages.h"
#include "text/utf.h"

#include <cstddef>
#include <new>
#include <utility>

namespace scrivalen::typeset {
namespace {

// More than any font has.
constexpr std::size_t kMostFontBytes = std::size_t{1} << 28;

}  // namespace

std::string readFontFile(const std::wstring& path, std::string& reason) {
  reason.clear();
  WholeFile file = readWholeFile(path, kMostFontBytes);
  switch (file.problem) {
    case WholeFile::Problem::None: break;
    case WholeFile::Problem::SpecialFile: reason = "it is a device or a pipe"; break;
    case WholeFile::Problem::TooLarge: reason = "it is larger than 256 MiB"; break;
    case WholeFile::Problem::System:
      if (isOutOfMemoryError(file.error)) {
        throw std::bad_alloc();
      }
      reason = toUtf8(systemErrorText(file.error));
      break;
  }
  return std::move(file.bytes);
}

}  // namespace scrivalen::typeset
