#include "output/archive/zip_writer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace scrivalen {
namespace {

constexpr std::int64_t kNoon = 1'732'881'600;  // 2024-11-29 12:00

// Keeps the last bytes.
class Tail : public ByteSink {
 public:
  std::string bytes;

 private:
  bool take(const char* data, std::size_t size) override {
    constexpr std::size_t kMost = 1'000'000;
    bytes.append(data, size);
    if (bytes.size() > 2 * kMost) {
      bytes.erase(0, bytes.size() - kMost);
    }
    return true;
  }
};

template <typename Write>
std::string archive(Write write, std::int64_t seconds = kNoon) {
  Tail tail;
  OutputBuffer out(tail);
  ZipWriter zip(out, seconds);
  write(zip);
  zip.finish();
  out.flush();
  return tail.bytes;
}

std::string archiveOfEmptyEntries(int count) {
  return archive([count](ZipWriter& zip) {
    for (int i = 0; i < count; ++i) {
      zip.addStored("a", "");
    }
  });
}

// Bytes as numbers, those of printing characters as such.
std::string readable(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    if (byte > 0x20 && byte < 0x7F) {
      text += c;
    } else {
      text.append({'[', kDigits[byte >> 4], kDigits[byte & 15], ']'});
    }
  }
  return text;
}

std::string readable(std::string_view bytes, std::size_t begin, std::size_t size) {
  return readable(bytes.substr(begin, size));
}

constexpr std::size_t kLocalSize = 30;
constexpr std::size_t kDescriptorSize = 16;
constexpr std::size_t kEntrySize = 46;
constexpr std::size_t kEndSize = 22;

}  // namespace

TEST(ZipWriter, WritesTheSizesOfWhatIsAtHandBeforeIt) {
  const std::string bytes = archive([](ZipWriter& zip) { zip.addStored("a.png", "abc"); });
  EXPECT_EQ(readable(bytes, 0, kLocalSize + 8),
            "PK[03][04]"
            "[14][00]"          // version 2.0
            "[00][08]"          // UTF-8
            "[00][00]"          // stored
            "[00]`}Y"           // 12:00, 2024-11-29
            "[C2]A$5"           // the CRC-32, 0x352441C2
            "[03][00][00][00]"  // packed
            "[03][00][00][00]"  // unpacked
            "[05][00][00][00]a.pngabc");
}

TEST(ZipWriter, WritesTheSizesOfAStreamAfterIt) {
  const std::string bytes = archive([](ZipWriter& zip) {
    zip.beginEntry("a");
    zip.write("ab");
    zip.write("c");
    zip.endEntry();
  });
  EXPECT_EQ(readable(bytes, 0, kLocalSize + 1 + 5 + kDescriptorSize),
            "PK[03][04][14][00]"
            "[08][08]"  // UTF-8, a descriptor
            "[08][00]"  // deflated
            "[00]`}Y[00][00][00][00][00][00][00][00][00][00][00][00][01][00][00][00]a"
            "KLJ[06][00]"
            "PK[07][08][C2]A$5[05][00][00][00][03][00][00][00]");
}

TEST(ZipWriter, EndsWithADirectory) {
  const std::string bytes = archive([](ZipWriter& zip) { zip.addStored("a", "abc"); });
  EXPECT_EQ(readable(bytes, kLocalSize + 4, std::string::npos),
            "PK[01][02][14][00][14][00][00][08][00][00][00]`}Y[C2]A$5[03][00][00][00][03][00][00][00]"
            "[01][00]"           // the length of the name
            "[00][00][00][00]"   // no extra fields, no comment
            "[00][00][00][00]"   // disk, internal attributes
            "[00][00][00][00]"   // external attributes
            "[00][00][00][00]a"  // the offset
            "PK[05][06][00][00][00][00]"
            "[01][00][01][00]/[00][00][00]\"[00][00][00][00][00]");
}

TEST(ZipWriter, WritesAnEmptyArchiveAndAnEmptyEntry) {
  EXPECT_EQ(readable(archive([](ZipWriter&) {})),
            "PK[05][06][00][00][00][00][00][00][00][00][00][00][00][00][00][00][00][00][00][00]");
  const std::string bytes = archive([](ZipWriter& zip) {
    zip.beginEntry("a");
    zip.endEntry();
  });
  EXPECT_EQ(readable(bytes, kLocalSize + 1, 2 + kDescriptorSize),
            "[03][00]PK[07][08][00][00][00][00][02][00][00][00][00][00][00][00]");
}

TEST(ZipWriter, CountsFromItsOwnBeginning) {
  Tail tail;
  OutputBuffer out(tail);
  out.write("before", 6);
  ZipWriter zip(out, kNoon);
  zip.addStored("a", "abc");
  zip.finish();
  out.flush();
  EXPECT_EQ(tail.bytes, "before" + archive([](ZipWriter& other) { other.addStored("a", "abc"); }));
}

TEST(ZipWriter, StoresOnlyTimesThatTheFormatHas) {
  const auto timeAt = [](std::int64_t seconds) {
    return readable(archive([](ZipWriter& zip) { zip.addStored("a", ""); }, seconds), 10, 4);
  };
  EXPECT_EQ(timeAt(0), "[00][00]![00]");              // 1980-01-01 00:00:00
  EXPECT_EQ(timeAt(315'532'803), "[01][00]![00]");    // 1980-01-01 00:00:02
  EXPECT_EQ(timeAt(4'354'819'199), "}[BF][9F][FF]");  // 2107-12-31 23:59:58
  EXPECT_EQ(timeAt(4'354'819'200), "}[BF][9F][FF]");
  EXPECT_EQ(timeAt(INT64_MAX), "}[BF][9F][FF]");
  EXPECT_EQ(timeAt(INT64_MIN), "[00][00]![00]");
}

TEST(ZipWriter, NeedsNoLargeNumbersFor65534Entries) {
  const std::string bytes = archiveOfEmptyEntries(65'534);
  EXPECT_EQ(readable(bytes, bytes.size() - kEndSize - 5, std::string::npos),
            "[A3][FF][1E][00]a"  // the last entry's offset and name
            "PK[05][06][00][00][00][00][FE][FF][FE][FF][A2][FF].[00][C2][FF][1E][00][00][00]");
}

TEST(ZipWriter, WritesLargeNumbersOfEntriesBesideTheEnd) {
  const std::string bytes = archiveOfEmptyEntries(65'535);
  const std::string_view end = std::string_view(bytes).substr(bytes.size() - kEndSize - 20 - 56);
  EXPECT_EQ(readable(end),
            "PK[06][06],[00][00][00][00][00][00][00]-[00]-[00][00][00][00][00][00][00][00][00]"
            "[FF][FF][00][00][00][00][00][00][FF][FF][00][00][00][00][00][00]"
            "[D1][FF].[00][00][00][00][00]"     // 65,535 * 47
            "[E1][FF][1E][00][00][00][00][00]"  // 65,535 * 31
            "PK[06][07][00][00][00][00][B2][FF]M[00][00][00][00][00][01][00][00][00]"
            "PK[05][06][00][00][00][00][FF][FF][FF][FF][D1][FF].[00][E1][FF][1E][00][00][00]");
}

TEST(ZipWriter, PointsBeyondFourGiB) {
  const std::string block(std::size_t{1} << 26, 'a');
  const std::string bytes = archive([&](ZipWriter& zip) {
    for (int i = 0; i < 63; ++i) {
      zip.addStored("a", block);
    }
    zip.addStored("a", block.substr(64 * (kLocalSize + 1) + 1));
    zip.addStored("near", "abc");
    zip.addStored("far", "abc");
  });
  constexpr std::size_t kNearSize = kEntrySize + 4 + 12;
  constexpr std::size_t kFarSize = kEntrySize + 3 + 12;
  const std::string_view last =
      std::string_view(bytes).substr(bytes.size() - kEndSize - 20 - 56 - kFarSize - kNearSize);
  constexpr const char* kBegin = "PK[01][02]-[00]-[00][00][08][00][00][00]`}Y[C2]A$5[03][00][00][00][03][00][00][00]";
  EXPECT_EQ(readable(last, 0, kNearSize),
            std::string(kBegin) +
                "[04][00][0C][00][00][00][00][00][00][00][00][00][00][00][FF][FF][FF][FF]near"
                "[01][00][08][00][FF][FF][FF][FF][00][00][00][00]");  // the offset that says that another one follows
  EXPECT_EQ(readable(last, kNearSize, kFarSize),
            std::string(kBegin) +
                "[03][00][0C][00][00][00][00][00][00][00][00][00][00][00][FF][FF][FF][FF]far"
                "[01][00][08][00]$[00][00][00][01][00][00][00]");
  EXPECT_EQ(readable(last, last.size() - kEndSize, kEndSize),
            "PK[05][06][00][00][00][00]B[00]B[00];[0C][00][00][FF][FF][FF][FF][00][00]");
}

TEST(ZipWriter, RefusesMoreThanFourGiBInAnEntry) {
  const std::string block(std::size_t{1} << 26, 'a');
  Tail tail;
  OutputBuffer out(tail);
  ZipWriter zip(out, kNoon);
  zip.beginEntry("a");
  for (int i = 0; i < 64; ++i) {
    zip.write(block);
  }
  EXPECT_EQ(zip.entrySize(), std::uint64_t{1} << 32);
  EXPECT_THROW(zip.write("b"), std::length_error);
}

}  // namespace scrivalen
