#include "output/clog.h"

#include "output/host_handlers.h"
#include "scrivalen/version.h"
#include "system/messages.h"
#include "text/fmt.h"
#include "text/utf.h"

using namespace scrivalen;

std::uint32_t CLog::FormatLastError(std::wstring& message) { return FormatLastError(message, lastSystemError()); }

std::uint32_t CLog::FormatLastError(std::wstring& message, std::uint32_t error) {
  message = systemErrorText(error);
  return error;
}

void CLog::Bug(std::wstring_view caption, std::wstring_view source, int line, std::wstring_view message) {
  Bug2(FMT::Format(L"%s %s(%d): %s", caption, source, line, message));
}

void CLog::Bug2(std::wstring_view message) {
  std::wstring line;
  for (const wchar_t c : message) {
    const bool isLineEnd = c == L'\r' || c == L'\n';
    if (!isLineEnd) {
      line += c;
    } else if (!line.empty() && line.back() != L' ') {
      line += L' ';
    }
  }
  line.erase(line.find_last_not_of(L' ') + 1);
  sendToLog(line.c_str());
}

std::wstring CLog::VersionStr(int) { return L"Scrivalen " + toWide(SCRIVALEN_VERSION); }
