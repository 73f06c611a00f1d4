#include "system/messages.h"

#include "text/utf.h"

#include <cerrno>
#include <system_error>

namespace scrivalen {

std::uint32_t lastSystemError() { return static_cast<std::uint32_t>(errno); }

void setLastSystemError(std::uint32_t error) { errno = static_cast<int>(error); }

std::uint32_t diskFullError() { return ENOSPC; }

bool isOutOfMemoryError(std::uint32_t error) { return error == ENOMEM; }

std::wstring systemErrorText(std::uint32_t error) {
  return toWide(std::system_category().message(static_cast<int>(error)));
}

void showMessageBox(const wchar_t*, const wchar_t*) {}

}  // namespace scrivalen
