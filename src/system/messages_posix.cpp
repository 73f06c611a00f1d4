#include "system/messages.h"

#include "text/utf.h"

#include <locale.h>
#include <cerrno>
#include <cstring>

namespace scrivalen {
namespace {

// The texts of the "C" locale, whatever the host has set. Its object is a static one, so there is nothing to free.
locale_t untranslated() {
  static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", locale_t{});
  return locale;
}

}  // namespace

std::uint32_t lastSystemError() { return static_cast<std::uint32_t>(errno); }

void setLastSystemError(std::uint32_t error) { errno = static_cast<int>(error); }

std::uint32_t diskFullError() { return ENOSPC; }

bool isOutOfMemoryError(std::uint32_t error) { return error == ENOMEM; }

std::wstring systemErrorText(std::uint32_t error) {
  const char* const text = ::strerror_l(static_cast<int>(error), untranslated());
  return toWide(text ? text : "Unknown error");
}

void showMessageBox(const wchar_t*, const wchar_t*) {}

}  // namespace scrivalen
