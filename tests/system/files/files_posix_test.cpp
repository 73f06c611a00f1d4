#include "system/files/files.h"

#include "support/files.h"
#include "system/messages.h"
#include "system/process/interrupt.h"
#include "system/process/stop.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace scrivalen;
using namespace scrivalen::test;

TEST(Files, MoveWorksAcrossVolumes) {
  const TemporaryFolder folder;
  if (!isFolder(L"/dev/shm")) {
    FAIL() << "this test needs a second volume at /dev/shm";
  }
  const std::wstring source = L"/dev/shm/scrivalen-" + randomName();
  writeBytes(source, std::string(200000, 'x'));
  writeBytes(folder / L"target", "old");
  EXPECT_TRUE(moveReplacing(source, folder / L"target"));
  EXPECT_FALSE(pathExists(source));
  EXPECT_EQ(bytesOf(folder / L"target"), std::string(200000, 'x'));
  EXPECT_EQ(filesEndingWith(folder.path(), L"").size(), 1u);
}

TEST(TemporaryFolderName, HasNoTrailingSeparatorExceptOfARoot) {
  const char* const variable = std::getenv("TMPDIR");
  const std::string earlier = variable ? variable : "/tmp";
  const std::pair<const char*, const wchar_t*> names[] = {
      {"/a/b", L"/a/b"}, {"/a/b//", L"/a/b"}, {"/", L"/"}, {"", L"/tmp"}};
  for (const auto& [folder, name] : names) {
    ::setenv("TMPDIR", folder, 1);
    EXPECT_EQ(temporaryFolderName(), name);
  }
  ::setenv("TMPDIR", earlier.c_str(), 1);
}

TEST(Paths, CarryBytesThatAreNotUtf8) {
  for (const std::string bytes :
       {"a\xE4z", "\xC3(", "\xE2\x82", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC3\xA4\x80", "\xFF\xFE"}) {
    EXPECT_EQ(narrowPath(widePath(bytes)), bytes);
  }
  EXPECT_EQ(widePath("a\xE4z"), std::wstring(L"a") + static_cast<wchar_t>(0xDCE4) + L"z");
}

TEST(Paths, OfBytesThatAreNotUtf8NameTheirFile) {
  const TemporaryFolder folder;
  const std::wstring path = folder / widePath("b\xE4r.txt");
  writeBytes(path, "x");
  EXPECT_EQ(filesEndingWith(folder.path(), L".txt"), std::vector<std::wstring>{widePath("b\xE4r.txt")});
  const int fd = ::open((narrowPath(folder.path()) + "/b\xE4r.txt").c_str(), O_RDONLY);
  EXPECT_GE(fd, 0);
  ::close(fd);
  EXPECT_EQ(resolvedPath(path), path);
  EXPECT_TRUE(deleteFile(path));
}

TEST(Paths, DifferInCase) {
  EXPECT_TRUE(isSamePath(L"/a.txt", L"/a.txt"));
  EXPECT_FALSE(isSamePath(L"/a.txt", L"/A.txt"));
}

TEST(Paths, WithInvalidCharactersAreRefused) {
  const TemporaryFolder folder;
  for (const int unit : {0xD83D, 0xDC7F, 0xDD00, 0x110000}) {
    const std::wstring path = folder / (L"a" + std::wstring(1, static_cast<wchar_t>(unit)));
    EXPECT_FALSE(openExclusive(path));
    EXPECT_EQ(lastSystemError(), std::uint32_t{EILSEQ});
    EXPECT_FALSE(pathExists(path));
  }
  EXPECT_TRUE(filesEndingWith(folder.path(), L"").empty());
}

TEST(Files, HaveNoSizeWhenDevices) {
  File null = openForReading(L"/dev/null");
  ASSERT_NE(null, nullptr);
  EXPECT_EQ(sizeOf(null), std::nullopt);
  EXPECT_TRUE(null.close());
}

TEST(Files, CreateBesideReportsWhyItFails) {
  EXPECT_EQ(createFileBeside(L"/proc/a"), std::nullopt);
  EXPECT_EQ(lastSystemError(), std::uint32_t{ENOENT});
  EXPECT_EQ(createFileBeside(L"/dev/null/a"), std::nullopt);
  EXPECT_EQ(lastSystemError(), std::uint32_t{ENOTDIR});
}

TEST(Files, DevicesAreSpecialAndCanBeWrittenTo) {
  EXPECT_TRUE(isSpecialFile(L"/dev/null"));
  File first = openExclusive(L"/dev/null");
  File second = openExclusive(L"/dev/null");
  EXPECT_NE(first, nullptr);
  EXPECT_NE(second, nullptr);
  EXPECT_TRUE(first.close());
  EXPECT_TRUE(second.close());
}

TEST(Files, ResolvesLinks) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "");
  std::filesystem::create_symlink(asPath(folder / L"a"), asPath(folder / L"link"));
  EXPECT_EQ(resolvedPath(folder / L"link"), resolvedPath(folder / L"a"));
  EXPECT_EQ(fileNameOf(resolvedPath(folder / L"link")), L"a");
  EXPECT_EQ(resolvedPath(folder / L"missing"), folder / L"missing");
  EXPECT_TRUE(isSameFile(folder / L"link", folder / L"a"));
}

TEST(Files, AreNotFoundByATruncatedPath) {
  const TemporaryFolder folder;
  for (const std::wstring name : {L"./", L"\u20AC/../"}) {
    std::wstring path = folder.path() + L'/';
    while (path.size() < 5000) {
      path += name;
    }
    EXPECT_FALSE(openExclusive(path + L"a"));
    EXPECT_EQ(lastSystemError(), std::uint32_t{ENAMETOOLONG});
    EXPECT_FALSE(deleteFile(path + L"a"));
    EXPECT_EQ(lastSystemError(), std::uint32_t{ENAMETOOLONG});
  }
}

TEST(Files, MayHaveTheLongestPath) {
  const TemporaryFolder folder;
  std::wstring path = folder / L"a";
  path.insert(path.size() - 1, 4095 - path.size(), L'/');
  writeBytes(folder / L"a", "");
  EXPECT_TRUE(pathExists(path));
  EXPECT_TRUE(deleteFile(path));
  EXPECT_FALSE(exists(folder / L"a"));
}

namespace {

// Ends the process with 0 if an interrupt makes an action fail that would otherwise wait forever.
template <typename Action>
[[noreturn]] void interrupt(Action fails) {
  rememberInterrupts();
  setStopQuery(&wasInterrupted);
  std::raise(SIGINT);
  const bool isInterrupted = fails() && lastSystemError() == EINTR;
  std::_Exit(isInterrupted ? 0 : 1);
}

}  // namespace

// A process that another thread starts has all files open until it runs its program.
TEST(Files, AreFreeOnceClosedThoughAProcessInheritedThem) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a";
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  File file = openExclusive(path);
  ASSERT_TRUE(file);
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(ends[1]);
    char byte = 0;
    ::_exit(::read(ends[0], &byte, 1) == 0 ? 0 : 1);
  }
  EXPECT_TRUE(file.close());
  EXPECT_TRUE(openForReading(path)) << errno;
  EXPECT_TRUE(openExclusive(path)) << errno;
  ::close(ends[1]);
  ::close(ends[0]);
  int status = -1;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST(Files, InterruptEndsAnOpenThatWaits) {
  const TemporaryFolder folder;
  const std::wstring pipe = folder / L"pipe";
  ASSERT_EQ(::mkfifo(std::filesystem::path(pipe).c_str(), 0600), 0);
  EXPECT_EXIT(interrupt([&] { return !openExclusive(pipe); }), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(interrupt([&] { return !openForReading(pipe); }), testing::ExitedWithCode(0), "");
}

TEST(Files, InterruptEndsAReadOrWriteThatWaits) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  const auto file = [&](int end) { return reinterpret_cast<NativeFile>(static_cast<std::intptr_t>(ends.at(end))); };
  const std::string bytes(1 << 20, 'x');
  EXPECT_EXIT(interrupt([&] {
                char byte = 0;
                return !readSome(file(0), &byte, 1);
              }),
              testing::ExitedWithCode(0), "");
  EXPECT_EXIT(interrupt([&] { return !writeAll(file(1), bytes.data(), bytes.size()); }), testing::ExitedWithCode(0),
              "");
  ::close(ends[0]);
  ::close(ends[1]);
}
