#include "output/file_error.h"

#include "output/exception_barrier.h"
#include "text/fmt.h"

namespace scrivalen {

std::wstring fileErrorText(FileError error, std::wstring_view file, std::wstring_view reason) {
  return FMT::Format(L"%s%s'. %s", error == FileError::Open ? L"File open/create error for '" : kWriteErrorStart, file,
                     reason);
}

void logFileError(FileError error, std::wstring_view file, const wchar_t* reason) noexcept {
  logMessage([&] { return fileErrorText(error, file, reason); }, reason);
}

}  // namespace scrivalen
