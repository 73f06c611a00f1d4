#include "support/faults/small_disk.h"

#include "support/files.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace scrivalen::test {
namespace {

std::string utf8(const std::wstring& path) {
  std::string bytes;
  scrivalen::appendUtf8(bytes, path);
  return bytes;
}

bool writeText(const char* path, const std::string& text) {
  const int file = ::open(path, O_WRONLY | O_CLOEXEC);
  const bool isWritten = file >= 0 && ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  if (file >= 0) {
    ::close(file);
  }
  return isWritten;
}

// Makes the process root in a namespace of its own, where mounts are visible to no other process.
bool enterNamespace() {
  const std::string user = std::to_string(::geteuid());
  const std::string group = std::to_string(::getegid());
  return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeText("/proc/self/setgroups", "deny") &&
         writeText("/proc/self/uid_map", "0 " + user + " 1") && writeText("/proc/self/gid_map", "0 " + group + " 1");
}

std::string found(const SmallDisk& disk, const std::function<std::string(const SmallDisk&)>& action) {
  return enterNamespace() ? action(disk) : "no namespace of one's own";
}

std::string readAll(int file) {
  std::string text;
  char chunk[4096];
  for (ssize_t size = ::read(file, chunk, sizeof chunk); size > 0; size = ::read(file, chunk, sizeof chunk)) {
    text.append(chunk, static_cast<std::size_t>(size));
  }
  return text;
}

}  // namespace

bool SmallDisk::resize(std::size_t kib) const {
  const std::string path = utf8(folder_);
  ::umount(path.c_str());
  return ::mount("tmpfs", path.c_str(), "tmpfs", 0, ("size=" + std::to_string(kib) + "k").c_str()) == 0;
}

std::string onSmallDisk(const std::function<std::string(const SmallDisk&)>& action) {
  const TemporaryFolder folder;
  int ends[2];
  EXPECT_EQ(::pipe(ends), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(ends[0]);
    const std::string text = found(SmallDisk(folder.path()), action);
    const bool isWritten = ::write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::_exit(isWritten ? 0 : 1);
  }
  ::close(ends[1]);
  const std::string text = readAll(ends[0]);
  ::close(ends[0]);
  int status = -1;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  return text;
}

}  // namespace scrivalen::test
