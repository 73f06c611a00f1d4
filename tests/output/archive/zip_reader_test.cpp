#include "output/archive/zip_reader.h"

#include "output/archive/zip_writer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen {
namespace {

constexpr std::size_t kMost = 100'000;

struct WholeArchive : ByteSink {
  bool take(const char* data, std::size_t size) override {
    bytes.append(data, size);
    return true;
  }
  std::string bytes;
};

// Entries "deflated", "streamed" and "stored", each of a text that is easy to compress.
std::string archiveOfThree(const std::string& text = std::string(1000, 'x')) {
  WholeArchive sink;
  OutputBuffer out(sink);
  ZipWriter zip(out, 0);
  zip.addEntry("deflated", text);
  zip.beginEntry("streamed");
  zip.write(text);
  zip.endEntry();
  zip.addStored("stored", text);
  zip.finish();
  out.flush();
  return sink.bytes;
}

// What reading an entry of an archive raises; empty if it is read.
std::string problemOf(std::string_view bytes, std::string_view name = "deflated", std::size_t most = kMost) {
  try {
    const ZipReader reader(bytes);
    EXPECT_EQ(reader.read(name, most), std::string(1000, 'x'));
    return {};
  } catch (const ArchiveError& error) {
    return error.what();
  }
}

// An archive with one byte changed, at a distance from the record of the directory of the entry of this number.
std::string withDirectoryByte(int entry, std::size_t offset, char value) {
  std::string bytes = archiveOfThree();
  std::size_t at = bytes.find("PK\x01\x02");
  for (; entry > 0; --entry) {
    at = bytes.find("PK\x01\x02", at + 1);
  }
  bytes.at(at + offset) = value;
  return bytes;
}

// The same from the record at the end.
std::string withEndByte(std::size_t offset, char value) {
  std::string bytes = archiveOfThree();
  bytes.at(bytes.rfind("PK\x05\x06") + offset) = value;
  return bytes;
}

}  // namespace

TEST(ZipReader, ReadsEveryKindOfEntryOfTheWriter) {
  const std::string bytes = archiveOfThree();
  for (const char* name : {"deflated", "streamed", "stored"}) {
    EXPECT_EQ(problemOf(bytes, name), "") << name;
  }
}

TEST(ZipReader, ReadsAnEntryWithoutContent) {
  const std::string bytes = archiveOfThree("");
  for (const char* name : {"deflated", "streamed", "stored"}) {
    EXPECT_EQ(ZipReader(bytes).read(name, 0), "") << name;
  }
}

TEST(ZipReader, IgnoresTheCaseOfNames) {
  const std::string bytes = archiveOfThree();
  EXPECT_EQ(problemOf(bytes, "DEFLATED"), "");
  EXPECT_TRUE(ZipReader(bytes).has("Stored"));
  EXPECT_FALSE(ZipReader(bytes).has("store"));
}

TEST(ZipReader, FindsTheDirectoryBeforeAComment) {
  std::string bytes = withEndByte(20, 30);
  bytes += "PK\x05\x06 and what looks like an end";
  bytes.resize(bytes.rfind("PK\x05\x06") + 30);
  EXPECT_EQ(problemOf(bytes), "");
}

TEST(ZipReader, ReadsAnArchiveWithBytesAfterIt) {
  EXPECT_EQ(problemOf(archiveOfThree() + "x"), "");
  EXPECT_EQ(problemOf(archiveOfThree() + std::string(60'000, '\0')), "");
  EXPECT_EQ(problemOf(archiveOfThree() + std::string(70'000, '\0')), "the archive is cut off");
}

TEST(ZipReader, PrefersAnEndRecordThatEndsTheFile) {
  std::string bytes = withEndByte(20, 30);
  bytes += "PK\x05\x06 and what looks like an end";
  bytes.resize(bytes.rfind("PK\x05\x06") + 30);
  bytes[bytes.size() - 10] = 0;  // the other's comment would be whole
  bytes[bytes.size() - 9] = 0;
  EXPECT_EQ(problemOf(bytes), "");
}

TEST(ZipReader, TellsWhatIsNoArchive) {
  EXPECT_EQ(problemOf(""), "it is not an archive (ZIP)");
  EXPECT_EQ(problemOf("PK"), "it is not an archive (ZIP)");
  EXPECT_EQ(problemOf(std::string(100'000, 'a')), "it is not an archive (ZIP)");
  EXPECT_EQ(problemOf(archiveOfThree().substr(0, 100)), "the archive is cut off");
}

TEST(ZipReader, NamesAnEntryThatIsMissing) { EXPECT_EQ(problemOf(archiveOfThree(), "a"), "its part 'a' is missing"); }

TEST(ZipReader, RefusesAnEntryBeyondTheLimitWithoutUnpackingIt) {
  EXPECT_EQ(problemOf(archiveOfThree(), "deflated", 999), "its part 'deflated' has more than 999 bytes");
}

TEST(ZipReader, NamesALimitOfWholeMebibytesInThem) {
  const std::string large = archiveOfThree(std::string((1 << 20) + 1, 'x'));
  EXPECT_EQ(problemOf(large, "stored", 1 << 20), "its part 'stored' has more than 1 MiB");
}

TEST(ZipReader, RefusesWhatIsEncryptedOrCompressedInAnotherWay) {
  EXPECT_EQ(problemOf(withDirectoryByte(0, 8, 1)), "its part 'deflated' is encrypted");
  EXPECT_EQ(problemOf(withDirectoryByte(0, 10, 12)),
            "its part 'deflated' is compressed in another way than with deflate");
}

TEST(ZipReader, RefusesTwoEntriesOfOneName) {
  std::string bytes = archiveOfThree();
  for (std::size_t at = bytes.find("streamed"); at != std::string::npos; at = bytes.find("streamed", at)) {
    bytes.replace(at, 8, std::string("Deflated"));
  }
  EXPECT_EQ(problemOf(bytes), "its part 'deflated' is in it twice");
}

TEST(ZipReader, FindsAWrongChecksum) {
  EXPECT_EQ(problemOf(withDirectoryByte(0, 16, 1)), "its part 'deflated' is damaged");
  EXPECT_EQ(problemOf(withDirectoryByte(2, 16, 1), "stored"), "its part 'stored' is damaged");
}

TEST(ZipReader, FindsSizesThatAreNotTheContents) {
  constexpr std::size_t kPackedSize = 20;
  constexpr std::size_t kSize = 24;
  for (const char change : {'\0', '\1', '\x7F'}) {
    EXPECT_EQ(problemOf(withDirectoryByte(0, kSize, change)), "its part 'deflated' is damaged");
    EXPECT_EQ(problemOf(withDirectoryByte(0, kPackedSize, change)), "its part 'deflated' is damaged");
    EXPECT_EQ(problemOf(withDirectoryByte(2, kPackedSize, change), "stored"), "its part 'stored' is damaged");
  }
  EXPECT_EQ(problemOf(withDirectoryByte(0, kPackedSize + 2, 1)), "its part 'deflated' is damaged");
}

TEST(ZipReader, FindsAnEntryThatIsElsewhere) {
  constexpr std::size_t kOffset = 42;
  EXPECT_EQ(problemOf(withDirectoryByte(0, kOffset, 1)), "its part 'deflated' is damaged");
  EXPECT_EQ(problemOf(withDirectoryByte(0, kOffset + 3, 1)), "its part 'deflated' is damaged");
  EXPECT_EQ(problemOf(withDirectoryByte(1, kOffset, 0), "streamed"), "its part 'streamed' is damaged");
}

TEST(ZipReader, RefusesDirectoriesThatAreNotWhole) {
  EXPECT_EQ(problemOf(withEndByte(4, 1)), "it is one of several parts of an archive");
  EXPECT_EQ(problemOf(withEndByte(8, 2)), "the directory of the archive is damaged");
  EXPECT_EQ(problemOf(withEndByte(12, 1)), "the directory of the archive is damaged");
  EXPECT_EQ(problemOf(withEndByte(16, 1)), "the directory of the archive is damaged");
  EXPECT_EQ(problemOf(withDirectoryByte(1, 0, 'X')), "the directory of the archive is damaged");
  EXPECT_EQ(problemOf(withDirectoryByte(2, 28, 100)), "the directory of the archive is damaged");
  std::string fewer = withEndByte(8, 2);
  fewer.at(fewer.rfind("PK\x05\x06") + 10) = 2;
  EXPECT_EQ(problemOf(fewer), "the directory of the archive is damaged");
}

TEST(ZipReader, RefusesNumbersOfLargeArchives) {
  std::string bytes = withEndByte(10, '\xFF');
  bytes.at(bytes.rfind("PK\x05\x06") + 11) = '\xFF';
  EXPECT_EQ(problemOf(bytes), "the archive needs ZIP64");
  std::string large = archiveOfThree();
  large.replace(large.find("PK\x01\x02") + 24, 4, std::string("\xFF\xFF\xFF\xFF"));
  EXPECT_EQ(problemOf(large), "the archive needs ZIP64");
}

TEST(ZipReader, ReadsOrRefusesAnArchiveWithAnyByteChanged) {
  const std::string whole = archiveOfThree();
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const int change : {1, 0x80, 0xFF}) {
      std::string bytes = whole;
      bytes[i] = static_cast<char>(bytes[i] ^ change);
      problemOf(bytes);
      problemOf(bytes, "stored");
      ASSERT_FALSE(testing::Test::HasFailure()) << i;
    }
    problemOf(std::string_view(whole).substr(0, i));
  }
}

}  // namespace scrivalen
