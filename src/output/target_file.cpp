#include "output/target_file.h"

#include "system/files/file_rights.h"
#include "system/messages.h"

#include <utility>

namespace scrivalen {
namespace {

// A new file that another program has written to meanwhile is not ours to delete.
bool isEmptyFile(const std::wstring& path) noexcept {
  const File file = openForReading(path);
  return file && sizeOf(file) == std::uint64_t{0};
}

}  // namespace

bool TargetFile::prepare(const std::wstring& path) {
  path_ = path;
  return createWorkFolder();
}

bool TargetFile::hold(const std::wstring& path) { return lock(path) && createWorkFolder(); }

bool TargetFile::lock(const std::wstring& path) {
  path_ = path;  // allocated before there is a file to delete
  HeldFile held = holdExclusive(path_);
  if (!held.file) {
    return false;
  }
  file_ = std::move(held.file);
  isNew_ = held.isNew;
  return true;
}

bool TargetFile::createWorkFolder() {
  isReplaceable_ = !isSpecialFile(path_) && !isOpenFilesName(path_);
  if (!isReplaceable_) {
    return work_.createElsewhere();
  }
  std::wstring resolved = resolvedPath(path_);
  if (resolved.empty()) {
    return false;
  }
  path_ = std::move(resolved);
  return work_.createBeside(path_);
}

std::wstring TargetFile::newFile() const { return (folder() + kPathSeparator).append(fileNameOf(path_)); }

bool TargetFile::replaceBy(const std::wstring& finished) {
  if (!isReplaceable_) {
    return writeInto(finished) && deleteFile(finished);
  }
  // Some systems cannot replace an open file.
  file_.close();
  const bool isInFolder = folderOf(finished) == folder() + kPathSeparator;
  if (!(isInFolder ? replaceFile(finished, path_) : replaceThroughFolder(finished))) {
    return false;
  }
  isNew_ = false;
  return true;
}

// The work folder is on the target's volume, and nobody else can read the file there before it has the target's rights.
bool TargetFile::replaceThroughFolder(const std::wstring& finished) {
  const std::wstring moved = newFile();
  if (!moveReplacing(finished, moved)) {
    return false;
  }
  if (!replaceFile(moved, path_)) {
    const SystemErrorKeeper error;
    moveReplacing(moved, finished);
    return false;
  }
  return true;
}

// An open file's name is opened again, which truncates the file: it may be longer than the new content.
bool TargetFile::writeInto(const std::wstring& finished) {
  const File source = openForReading(finished);
  if (!source) {
    return false;
  }
  if (file_ && sizeOf(file_)) {
    file_.close();
  }
  if (!file_) {
    file_ = openExclusive(path_);
  }
  return file_ && copyContents(source, file_) && file_.close();
}

void TargetFile::release() noexcept {
  const SystemErrorKeeper error;
  file_.close();
  if (std::exchange(isNew_, false) && isEmptyFile(path_)) {
    deleteFile(path_);
  }
  work_.remove();
}

}  // namespace scrivalen
