#include "output/target_file.h"

#include <utility>

namespace scrivalen::platform {
namespace {

bool appendTo(NativeFile target, const std::wstring& finished) noexcept {
  const NativeFile source = openForReading(finished);
  if (!source) {
    return false;
  }
  const bool copied = copyContents(source, target);
  return closeFile(source) && copied;
}

// What another program has written into a new file meanwhile is not ours to remove.
bool isEmptyFile(const std::wstring& path) noexcept {
  const NativeFile file = openForReading(path);
  if (!file) {
    return false;
  }
  const bool isEmpty = sizeOf(file) == std::uint64_t{0};
  closeFile(file);
  return isEmpty;
}

}  // namespace

bool TargetFile::hold(const std::wstring& path) {
  path_ = path;  // known before there is a file that may have to go away again
  const HeldFile held = holdExclusive(path_);
  if (!held.file) {
    return false;
  }
  file_ = held.file;
  isNew_ = held.isNew;
  path_ = resolvedPath(path_);
  return prepareFolder();
}

// A file is created there and removed again, which tells whether that will be possible at the end.
bool TargetFile::prepareFolder() {
  if (isSpecialFile(path_)) {
    privateFolder_ = createPrivateFolder().value_or(L"");
    return !privateFolder_.empty();
  }
  const auto probe = createTemporary();
  return probe && deleteFile(*probe);
}

std::wstring TargetFile::folder() const {
  if (!privateFolder_.empty()) {
    return privateFolder_;
  }
  const std::wstring_view folder = folderOf(path_);
  const bool isRoot = folder.size() <= 1 || folder[folder.size() - 2] == L':';
  return folder.empty() ? L"." : std::wstring(isRoot ? folder : folder.substr(0, folder.size() - 1));
}

// Whoever could not read the file that is replaced must not be able to read the new one, not even for a moment.
std::optional<std::wstring> TargetFile::createTemporary() const {
  auto file = createFileBeside(privateFolder_.empty() ? path_ : privateFolder_ + kPathSeparator);
  if (file && !isNew_ && privateFolder_.empty()) {
    copyPermissions(path_, *file);
  }
  return file;
}

bool TargetFile::replaceBy(const std::wstring& finished) {
  if (!privateFolder_.empty()) {
    return appendTo(file_, finished) && deleteFile(finished) && closeFile(std::exchange(file_, nullptr));
  }
  return moveFrom(finished);
}

bool TargetFile::moveFrom(const std::wstring& finished) {
  // Some systems let no file be moved over one that is open.
  closeFile(std::exchange(file_, nullptr));
  if (!moveReplacing(finished, path_)) {
    return false;
  }
  isNew_ = false;
  return true;
}

void TargetFile::release() noexcept {
  if (file_) {
    closeFile(std::exchange(file_, nullptr));
  }
  if (std::exchange(isNew_, false) && isEmptyFile(path_)) {
    deleteFile(path_);
  }
  if (!privateFolder_.empty()) {
    deleteFolder(std::exchange(privateFolder_, {}));
  }
}

}  // namespace scrivalen::platform
