#include "system/console.h"

#include "system/files/files.h"
#include "system/windows_api.h"
#include "text/utf.h"

#include <shellapi.h>

namespace scrivalen {
namespace {

bool isTerminal(HANDLE stream) {
  DWORD mode = 0;
  return GetConsoleMode(stream, &mode) != 0;
}

void writeStream(DWORD which, std::string_view text) {
  const HANDLE stream = GetStdHandle(which);
  if (isTerminal(stream)) {
    const std::wstring wide = toWide(text);
    DWORD written = 0;
    WriteConsoleW(stream, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    return;
  }
  writeAll(stream, text.data(), text.size());
}

}  // namespace

// What main receives has gone through the code page; the system's own command line has not.
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

void writeStandardOutput(std::string_view text) { writeStream(STD_OUTPUT_HANDLE, text); }

void writeStandardError(std::string_view text) { writeStream(STD_ERROR_HANDLE, text); }

// A terminal that does not understand control sequences would show them: it is not treated as one.
bool isStandardErrorTerminal() {
  const HANDLE stream = GetStdHandle(STD_ERROR_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(stream, &mode) && SetConsoleMode(stream, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

}  // namespace scrivalen
