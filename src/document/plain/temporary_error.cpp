#include "document/plain/temporary_error.h"

#include "output/failure_reason.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "text/utf.h"

#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>

namespace scrivalen::document {

void raiseTemporaryError(std::string_view what, std::wstring_view reason) {
  if (reason == kOutOfMemory) {
    throw std::bad_alloc();
  }
  throw std::runtime_error(std::string(what) + " in '" + toUtf8(temporaryFolderName()) + "': " + toUtf8(reason));
}

void raiseTemporaryError(std::string_view what) {
  const std::uint32_t error = lastSystemError();
  if (isOutOfMemoryError(error)) {
    throw std::bad_alloc();
  }
  raiseTemporaryError(what, systemErrorText(error));
}

}  // namespace scrivalen::document
