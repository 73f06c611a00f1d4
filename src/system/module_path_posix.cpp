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
  // A program linked with the library's objects is known by the name it was called by, which need not be a path.
  return resolvedPath(folderOf(path).empty() ? L"/proc/self/exe" : path);
}

// Asked while the library is being loaded: its name may be relative to a folder that the host leaves later.
const std::wstring loadedFrom = findModule();

}  // namespace

std::wstring modulePath() { return loadedFrom; }

}  // namespace scrivalen
