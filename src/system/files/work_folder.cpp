#include "system/files/work_folder.h"

#include "system/messages.h"

#include <cstdint>
#include <utility>

namespace scrivalen {
namespace {

// The common prefix of all folder names for one file. The file's own name may already have the maximum length, so the
// prefix contains its FNV-1a hash instead.
std::wstring commonPrefix(std::wstring_view file) {
  constexpr std::wstring_view kDigits = L"0123456789abcdef";
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const wchar_t c : file) {
    hash = (hash ^ static_cast<std::uint32_t>(c)) * 0x100000001B3;
  }
  std::wstring name(kOwnPrefix);
  for (int shift = 60; shift >= 0; shift -= 4) {
    name += kDigits[hash >> shift & 0xF];
  }
  return name + L'-';
}

}  // namespace

bool WorkFolder::createBeside(const std::wstring& file) {
  return create(std::wstring(folderOf(file)), commonPrefix(fileNameOf(file)), pathExists(file));
}

// On Windows the folder for temporary files is the user's own, and a new folder inherits its access rights. A help
// compiler may dislike a name that begins with a dot.
bool WorkFolder::createElsewhere() { return create(temporaryFolder(), L"scrivalen-work-", false); }

bool WorkFolder::create(const std::wstring& folder, const std::wstring& prefix, bool isPrivate) {
  removeAbandonedFolders(folder, prefix);
  return createWithRandomName(folder + prefix, [&](std::wstring path) {
    path_ = std::move(path);
    if (!createFolder(path_, isPrivate)) {
      return failedCreation(path_);
    }
    return hold() ? Creation::Done : Creation::NameTaken;  // another process may have removed it as abandoned
  });
}

bool WorkFolder::hold() {
  held_ = holdFolder(path_);
  if (!held_) {
    const SystemErrorKeeper error;
    deleteFolder(path_);
  }
  return static_cast<bool>(held_);
}

void WorkFolder::remove() noexcept {
  if (held_) {
    const SystemErrorKeeper error;
    removeHeldFolder(std::move(held_), path_);
    path_.clear();
  }
}

}  // namespace scrivalen
