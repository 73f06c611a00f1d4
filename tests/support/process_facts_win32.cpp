// Writes facts about its process to the file named by the first argument: its priority, whether it has a window, and
// whether the handle in the second argument is an open file in this process.

#include "system/windows_api.h"

#include <cstdlib>
#include <fstream>

int main(int argc, char** argv) {
  if (argc != 3) {
    return 2;
  }
  const HANDLE handle = reinterpret_cast<HANDLE>(std::strtoull(argv[2], nullptr, 10));
  std::ofstream facts(argv[1], std::ios::binary);
  facts << "priority " << GetPriorityClass(GetCurrentProcess()) << '\n';
  facts << "window " << (GetConsoleWindow() ? "yes" : "no") << '\n';
  facts << "file " << (GetFileType(handle) == FILE_TYPE_DISK ? "yes" : "no") << '\n';
  return facts.flush() ? 0 : 1;
}
