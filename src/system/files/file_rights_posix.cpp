#include "system/files/file_rights.h"

#include "system/files/native_path_posix.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace scrivalen {
namespace {

constexpr mode_t kAllRights = 0777;
constexpr mode_t kOwner = 0700;
constexpr const char* kListName = "system.posix_acl_access";

mode_t ownerBits(mode_t mode) { return mode >> 6 & 7; }
mode_t groupBits(mode_t mode) { return mode >> 3 & 7; }
mode_t otherBits(mode_t mode) { return mode & 7; }

// The owner's bits of a mode, and the same bits for group and others.
mode_t withSharedBits(mode_t mode, mode_t shared) { return (mode & kOwner) | shared << 3 | shared; }

// A file's access control list as Linux returns it: a version of four bytes, then eight bytes per entry, the first four
// of which are its tag and its rights, all little-endian.
class AccessList {
 public:
  explicit AccessList(const NativePath& path) noexcept {
    const ssize_t size = ::getxattr(path.c_str(), kListName, bytes_, sizeof bytes_);
    size_ = size > 0 ? static_cast<std::size_t>(size) : 0;
    isUnknown_ = size < 0 && errno != ENODATA && errno != ENOTSUP;
  }

  bool exists() const noexcept { return size_ > 0; }
  // Whether there may be a list that cannot be read.
  bool isUnknown() const noexcept { return isUnknown_; }

  bool applyTo(const NativePath& path) const noexcept {
    return ::setxattr(path.c_str(), kListName, bytes_, size_, 0) == 0;
  }

  // The rights that every entry but the owner's grants.
  mode_t commonBits() const noexcept {
    constexpr std::size_t kHeader = 4;
    constexpr std::size_t kEntry = 8;
    constexpr unsigned kOwnersTag = 1;
    mode_t common = 7;
    for (std::size_t at = kHeader; at + kEntry <= size_; at += kEntry) {
      if (number(at) != kOwnersTag) {
        common &= number(at + 2);
      }
    }
    return common;
  }

 private:
  unsigned number(std::size_t at) const noexcept {
    return static_cast<unsigned char>(bytes_[at]) | static_cast<unsigned>(static_cast<unsigned char>(bytes_[at + 1]))
                                                        << 8;
  }

  char bytes_[16384];  // more than file systems can store
  std::size_t size_ = 0;
  bool isUnknown_ = false;
};

// Whether the file has no more rights than @p mode although they could not be set.
bool isNoWider(const NativePath& path, mode_t mode) noexcept {
  const int error = errno;
  struct stat status {};
  const AccessList list(path);
  const bool isNarrow = ::stat(path.c_str(), &status) == 0 && (status.st_mode & kAllRights & ~(mode | kOwner)) == 0 &&
                        !list.exists() && !list.isUnknown();
  errno = error;
  return isNarrow;
}

// Gives a file the owner and the group of another as far as this user may. Returns the file's new status.
struct stat withOwnerOf(const struct stat& old, const NativePath& path) noexcept {
  struct stat status {};
  ::stat(path.c_str(), &status);
  if (status.st_uid != old.st_uid || status.st_gid != old.st_gid) {
    if (::chown(path.c_str(), old.st_uid, old.st_gid) != 0 && status.st_gid != old.st_gid) {
      [[maybe_unused]] const int ignored = ::chown(path.c_str(), status.st_uid, old.st_gid);
    }
    ::stat(path.c_str(), &status);
  }
  return status;
}

// With a new owner or group, a user may get the rights of another class. So each class only gets the rights that both
// the old and the new class had.
mode_t narrowed(mode_t mode, bool keepsOwner, bool keepsGroup) {
  mode_t group = groupBits(mode);
  mode_t other = otherBits(mode);
  if (!keepsGroup) {
    group = other = group & other;
  }
  if (!keepsOwner) {
    group &= ownerBits(mode);
    other &= ownerBits(mode);
  }
  return (mode & kOwner) | group << 3 | other;
}

}  // namespace

bool copyRights(const std::wstring& from, const std::wstring& to) noexcept {
  const NativePath source(from);
  const NativePath target(to);
  struct stat old {};
  if (::stat(source.c_str(), &old) != 0) {
    return false;
  }
  const AccessList list(source);
  const struct stat now = withOwnerOf(old, target);
  const bool keepsOwner = now.st_uid == old.st_uid;
  const bool keepsGroup = now.st_gid == old.st_gid;
  mode_t mode = narrowed(old.st_mode & kAllRights, keepsOwner, keepsGroup);
  if (list.exists()) {
    const mode_t common = list.commonBits();
    const mode_t most = groupBits(old.st_mode) | otherBits(old.st_mode);
    const bool isSafe = keepsGroup && (keepsOwner || (most & ~ownerBits(old.st_mode)) == 0);
    if (isSafe && list.applyTo(target)) {
      return true;
    }
    mode = narrowed(withSharedBits(mode, common), keepsOwner, keepsGroup);
  } else if (list.isUnknown()) {
    mode &= kOwner;
  }
  // A list inherited from the folder would stay in force, with the group's bits as its mask.
  if (::removexattr(target.c_str(), kListName) != 0 && errno != ENODATA && errno != ENOTSUP) {
    mode &= kOwner;
  }
  return ::chmod(target.c_str(), mode) == 0 || isNoWider(target, mode);
}

bool replaceFile(const std::wstring& finished, const std::wstring& target) noexcept {
  const NativePath path(target);
  if (!path.isValid()) {
    errno = EILSEQ;
    return false;
  }
  struct stat status {};
  const bool isReplaced = ::stat(path.c_str(), &status) == 0;
  return (!isReplaced || copyRights(target, finished)) && ::rename(NativePath(finished).c_str(), path.c_str()) == 0;
}

}  // namespace scrivalen
