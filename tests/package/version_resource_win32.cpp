// Reads the version resource of a library, as a file's properties show it, and compares it with the version in the
// headers.
//
//   version_resource LIBRARY
#include <scrivalen/text.h>
#include <scrivalen/version.h>

#include <cstdio>
#include <string>
#include <vector>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <winver.h>

namespace {

constexpr const wchar_t* kStrings = L"\\StringFileInfo\\040904B0\\";  // English (United States), UTF-16

int failures = 0;

void expect(const std::wstring& what, const std::wstring& value, const std::wstring& expected) {
  if (value != expected) {
    std::fprintf(stderr, "version_resource: %s is '%s' instead of '%s'\n", scrivalen::ToUtf8(what).c_str(),
                 scrivalen::ToUtf8(value).c_str(), scrivalen::ToUtf8(expected).c_str());
    ++failures;
  }
}

std::wstring dotted(DWORD high, DWORD low) {
  std::wstring numbers;
  for (const int number : {HIWORD(high), LOWORD(high), HIWORD(low), LOWORD(low)}) {
    numbers += (numbers.empty() ? L"" : L".") + std::to_wstring(number);
  }
  return numbers;
}

void checkNumbers(const void* resource) {
  const std::wstring expected = std::to_wstring(SCRIVALEN_VERSION_MAJOR) + L"." +
                                std::to_wstring(SCRIVALEN_VERSION_MINOR) + L"." +
                                std::to_wstring(SCRIVALEN_VERSION_PATCH) + L".0";
  void* info = nullptr;
  UINT size = 0;
  if (!VerQueryValueW(resource, L"\\", &info, &size) || size != sizeof(VS_FIXEDFILEINFO)) {
    expect(L"the version in numbers", L"missing", expected);
    return;
  }
  const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(info);
  expect(L"the file's version in numbers", dotted(fixed.dwFileVersionMS, fixed.dwFileVersionLS), expected);
  expect(L"the product's version in numbers", dotted(fixed.dwProductVersionMS, fixed.dwProductVersionLS), expected);
}

void checkString(const void* resource, const wchar_t* name, const std::wstring& expected) {
  void* text = nullptr;
  UINT size = 0;
  const bool isThere = VerQueryValueW(resource, (kStrings + std::wstring(name)).c_str(), &text, &size) && size > 0;
  expect(name, isThere ? static_cast<const wchar_t*>(text) : L"missing", expected);
}

}  // namespace

int main(int argc, char** argv) {
  const std::wstring library = scrivalen::FromUtf8(argc == 2 ? argv[1] : "");
  std::vector<char> resource(GetFileVersionInfoSizeW(library.c_str(), nullptr));
  if (resource.empty() ||
      !GetFileVersionInfoW(library.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data())) {
    std::fprintf(stderr, "version_resource: '%s' has no version resource\n", argc == 2 ? argv[1] : "");
    return 1;
  }
  checkNumbers(resource.data());
  checkString(resource.data(), L"FileVersion", scrivalen::FromUtf8(SCRIVALEN_VERSION));
  checkString(resource.data(), L"ProductVersion", scrivalen::FromUtf8(SCRIVALEN_VERSION));
  checkString(resource.data(), L"ProductName", L"Scrivalen");
  checkString(resource.data(), L"OriginalFilename", L"Scrivalen.dll");
  return failures == 0 ? 0 : 1;
}
