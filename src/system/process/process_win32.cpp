#include "system/process/process.h"

#include "system/process/stop.h"
#include "system/windows_api.h"

namespace scrivalen {
namespace {

constexpr DWORD kPollMilliseconds = 50;

// Quotes an argument for the way programs parse their command line: backslashes before a double quote are doubled.
void appendQuoted(std::wstring& line, const std::wstring& argument) {
  line += line.empty() ? L"\"" : L" \"";
  std::size_t backslashes = 0;
  for (const wchar_t c : argument) {
    if (c == L'"') {
      line.append(backslashes + 1, L'\\');
    }
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    line += c;
  }
  line.append(backslashes, L'\\');
  line += L'"';
}

int waitFor(const PROCESS_INFORMATION& process, const std::function<bool()>& isToStop) {
  while (WaitForSingleObject(process.hProcess, kPollMilliseconds) == WAIT_TIMEOUT) {
    if (isStopRequested() || (isToStop && isToStop())) {
      TerminateProcess(process.hProcess, static_cast<UINT>(-1));
    }
  }
  DWORD status = 0;
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return static_cast<int>(status);
}

}  // namespace

ProcessResult runProgram(const std::vector<std::wstring>& arguments, const std::vector<std::wstring>&,
                         const ProcessSetup& setup) {
  ProcessResult result;
  for (const std::wstring& argument : arguments) {
    appendQuoted(result.commandLine, argument);
  }
  std::wstring line = result.commandLine;  // the system may write to it
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  const wchar_t* const folder = setup.folder.empty() ? nullptr : setup.folder.c_str();
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW | NORMAL_PRIORITY_CLASS, nullptr,
                      folder, &startup, &process)) {
    result.error = GetLastError();
    return result;
  }
  result.started = true;
  result.exitStatus = waitFor(process, setup.isToStop);
  return result;
}

}  // namespace scrivalen
