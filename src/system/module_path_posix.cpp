#include "system/module_path.h"

#include "system/files/files.h"

#include <dlfcn.h>

namespace scrivalen {
namespace {

std::wstring findModule() {
  static const char anchor = 0;
  Dl_info info{};
  if (!::dladdr(&anchor, &info) || !info.dli_fname) {
    return {};
  }
  const std::wstring path = widePath(info.dli_fname);
  // For a program that contains the library's objects this is the name it was started by, which need not be a path.
  return resolvedPath(folderOf(path).empty() ? L"/proc/self/exe" : path);
}

// Found while the library is being loaded: its name may be relative to a current folder that the host changes later.
const std::wstring loadedFrom = findModule();

}  // namespace

std::wstring modulePath() { return loadedFrom; }

}  // namespace scrivalen
