#include "system/files/whole_file.h"

#include "system/files/files.h"
#include "system/messages.h"

#include <string_view>

namespace scrivalen {

WholeFile readWholeFile(const std::wstring& path, std::size_t most) {
  WholeFile result;
  if (isSpecialFile(path)) {
    result.problem = WholeFile::Problem::SpecialFile;
    return result;
  }
  const File file = openForReading(path);
  // A pipe that was put in place of the file has no size.
  bool isTooLarge = file && sizeOf(file).value_or(0) > most;
  const bool isRead = file && !isTooLarge && readRest(file, [&](std::string_view piece) {
    isTooLarge = piece.size() > most - result.bytes.size();
    result.bytes.append(isTooLarge ? std::string_view() : piece);
    return !isTooLarge;
  });
  if (!isRead) {
    result.error = isTooLarge ? 0 : lastSystemError();
    result.problem = isTooLarge ? WholeFile::Problem::TooLarge : WholeFile::Problem::System;
    result.bytes.clear();
  }
  return result;
}

}  // namespace scrivalen
