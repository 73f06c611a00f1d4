#include "system/console.h"

#include "system/files/files.h"
#include "system/windows_api.h"
#include "text/utf.h"

#include <iterator>

#include <shellapi.h>

namespace scrivalen {
namespace {

bool isTerminal(HANDLE stream) {
  DWORD mode = 0;
  return GetConsoleMode(stream, &mode) != 0;
}

// Takes as many UTF-16 code units off a text as fit.
std::size_t takeWide(std::string_view& text, wchar_t* units, std::size_t capacity) noexcept {
  const char* at = text.data();
  const char* const end = at + text.size();
  std::size_t size = 0;
  while (at != end && size + 1 < capacity) {
    char32_t c = 0;
    if (!nextUtf8(at, end, c)) {
      c = kReplacement;
    }
    if (unitsOf(c) == 2) {
      units[size++] = static_cast<wchar_t>(highSurrogate(c));
      c = lowSurrogate(c);
    }
    units[size++] = static_cast<wchar_t>(c);
  }
  text.remove_prefix(static_cast<std::size_t>(at - text.data()));
  return size;
}

bool writeTerminal(HANDLE stream, std::string_view text) noexcept {
  wchar_t units[1024];
  while (!text.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(takeWide(text, units, std::size(units)));
    if (!WriteConsoleW(stream, units, size, &written, nullptr)) {
      return false;
    }
  }
  return true;
}

bool writeStream(DWORD which, std::string_view text) noexcept {
  const HANDLE stream = GetStdHandle(which);
  return isTerminal(stream) ? writeTerminal(stream, text) : writeAll(stream, text.data(), text.size());
}

}  // namespace

// The arguments of main have been converted to the code page; the system's own command line has not.
std::vector<std::string> programArguments(int, char**) {
  int count = 0;
  wchar_t** const list = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) {
    arguments.push_back(narrowPath(list[i]));
  }
  LocalFree(list);
  return arguments;
}

std::optional<std::string> environmentVariable(const char* name) {
  const std::wstring wideName = widePath(name);
  std::wstring value(32767, L'\0');
  SetLastError(ERROR_SUCCESS);
  const DWORD length = GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size()));
  if (length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) {
    return std::nullopt;
  }
  return narrowPath(value.c_str());
}

std::optional<std::size_t> readStandardInput(void* data, std::size_t size) {
  return readSome(GetStdHandle(STD_INPUT_HANDLE), data, size);
}

bool writeStandardOutput(std::string_view text) noexcept { return writeStream(STD_OUTPUT_HANDLE, text); }

bool writeStandardError(std::string_view text) noexcept { return writeStream(STD_ERROR_HANDLE, text); }

// A terminal that does not understand control sequences would show them, so it does not count as one.
bool isStandardErrorTerminal() {
  const HANDLE stream = GetStdHandle(STD_ERROR_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(stream, &mode) && SetConsoleMode(stream, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

}  // namespace scrivalen
