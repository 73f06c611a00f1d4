#include "system/files/files.h"

#include "system/messages.h"
#include "text/ascii.h"

#include <algorithm>
#include <random>

namespace scrivalen {

File& File::operator=(File&& other) noexcept {
  File replaced(std::exchange(file_, other.release()));
  return *this;
}

File::~File() {
  if (file_) {
    const SystemErrorKeeper error;
    closeFile(file_);
  }
}

bool File::close() noexcept { return !file_ || closeFile(release()); }

std::wstring_view folderOf(std::wstring_view path) {
  const auto separator = path.find_last_of(kPathSeparators);
  return separator == std::wstring_view::npos ? std::wstring_view() : path.substr(0, separator + 1);
}

std::wstring_view fileNameOf(std::wstring_view path) { return path.substr(folderOf(path).size()); }

bool isSameFile(const std::wstring& a, const std::wstring& b) {
  const auto identity = identityOf(a);
  return identity && identity == identityOf(b);
}

bool ignoresCase(const std::wstring& path) {
  const auto probe = createFileBeside(path);
  if (!probe) {
    return false;
  }
  std::wstring name(fileNameOf(*probe));
  std::transform(name.begin(), name.end(), name.begin(), [](wchar_t c) { return asciiUpper(c); });
  // Some file systems give a file another identity for each spelling of its name, but nobody else has this random name.
  const bool isFound = pathExists(std::wstring(folderOf(*probe)) + name);
  deleteFile(*probe);
  return isFound;
}

std::wstring temporaryFolderName() {
  std::wstring name = temporaryFolder();
  const auto isSeparator = [](wchar_t c) { return kPathSeparators.find(c) != std::wstring_view::npos; };
  while (name.size() > 1 && isSeparator(name.back()) && name[name.size() - 2] != L':') {
    name.pop_back();
  }
  return name;
}

std::wstring randomName() {
  constexpr std::wstring_view kLetters = L"abcdefghijklmnopqrstuvwxyz0123456789";
  std::random_device random;
  std::uniform_int_distribution<std::size_t> letter(0, kLetters.size() - 1);
  std::wstring name(12, L'a');
  for (wchar_t& c : name) {
    c = kLetters[letter(random)];
  }
  return name;
}

bool copyContents(NativeFile from, NativeFile to) noexcept {
  return readRest(from, [to](std::string_view bytes) { return writeAll(to, bytes.data(), bytes.size()); });
}

Creation failedCreation(const std::wstring& path) noexcept {
  const SystemErrorKeeper error;
  return pathExists(path) ? Creation::NameTaken : Creation::Failed;
}

std::optional<std::wstring> createFileBeside(const std::wstring& path) {
  std::optional<std::wstring> created;
  createWithRandomName(std::wstring(folderOf(path)).append(kOwnPrefix), [&created](std::wstring name) {
    if (!createNew(name)) {
      return failedCreation(name);
    }
    created = std::move(name);
    return Creation::Done;
  });
  return created;
}

std::vector<std::wstring> filesEndingWith(const std::wstring& folder, std::wstring_view suffix) {
  return findFilesEndingWith(folder, suffix).value_or(std::vector<std::wstring>());
}

}  // namespace scrivalen
