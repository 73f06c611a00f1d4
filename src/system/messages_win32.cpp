#include "system/messages.h"

#include "system/windows_api.h"

#include <algorithm>

namespace scrivalen {

std::uint32_t lastSystemError() { return GetLastError(); }

void setLastSystemError(std::uint32_t error) { SetLastError(error); }

std::uint32_t diskFullError() { return ERROR_DISK_FULL; }

bool isOutOfMemoryError(std::uint32_t error) { return error == ERROR_NOT_ENOUGH_MEMORY || error == ERROR_OUTOFMEMORY; }

std::wstring systemErrorText(std::uint32_t error) {
  wchar_t buffer[1024];
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                      buffer, static_cast<DWORD>(std::size(buffer)), nullptr);
  std::wstring text(buffer, length);
  if (text.empty()) {
    text = L"Error " + std::to_wstring(error);
  }
  const auto last = text.find_last_not_of(L"\r\n ");
  text.resize(last == std::wstring::npos ? 0 : last + 1);
  return text;
}

void showMessageBox(const wchar_t* title, const wchar_t* text) {
  MessageBoxW(nullptr, text, title, MB_OK | MB_ICONERROR | MB_TASKMODAL);
}

}  // namespace scrivalen
