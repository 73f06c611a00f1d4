// libxlsxwriter opens its files by narrow names in the ANSI code page, which cannot express every path. It is built
// with these functions in place of its two that open files (see ScrivalenDependencies.cmake), and gets names from
// narrowPath.
#include "system/files/files.h"
#include "system/windows_api.h"

#include <fcntl.h>
#include <io.h>
#include <xlsxwriter/third_party/zip.h>

#include <cstdio>
#include <exception>
#include <string>

using namespace scrivalen;

namespace {

// No exception may pass through the library, which is C.
template <typename Open>
auto opened(Open open) noexcept -> decltype(open()) {
  try {
    return open();
  } catch (const std::exception&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
}

voidpf openForWriting(voidpf, const void* path, int) {
  return opened([path] { return _wfopen(widePath(static_cast<const char*>(path)).c_str(), L"wb"); });
}

// A file that is deleted with its last handle, however the program ends.
HANDLE createTemporary(const std::wstring& folder) {
  HANDLE file = INVALID_HANDLE_VALUE;
  createWithRandomName((folder + kPathSeparator).append(kOwnPrefix), [&file](const std::wstring& path) {
    file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                       FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return file == INVALID_HANDLE_VALUE ? failedCreation(path) : Creation::Done;
  });
  return file;
}

}  // namespace

extern "C" zipFile scrivalenOpenArchive(const char* path, int append) {
  zlib_filefunc64_def functions{};
  fill_fopen64_filefunc(&functions);
  functions.zopen64_file = &openForWriting;
  return zipOpen2_64(path, append, nullptr, &functions);
}

extern "C" FILE* tmpfileplus(const char* dir, const char*, char** pathname, int) {
  if (pathname) {
    *pathname = nullptr;
  }
  const HANDLE file = opened([dir] { return createTemporary(widePath(dir)); });
  if (!file || file == INVALID_HANDLE_VALUE) {
    return nullptr;
  }
  const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_RDWR | _O_BINARY);
  if (descriptor < 0) {
    CloseHandle(file);
    return nullptr;
  }
  FILE* const stream = _fdopen(descriptor, "w+b");
  if (!stream) {
    _close(descriptor);
  }
  return stream;
}
