#include "support/documents/archive_maker.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdint>

namespace scrivalen::test {
namespace {

constexpr std::uint64_t kElsewhere = 0xFFFFFFFF;

std::string number(std::uint64_t value, int bytes) {
  std::string result;
  for (int i = 0; i < bytes; ++i) {
    result += static_cast<char>(value >> (8 * i) & 0xFF);
  }
  return result;
}

std::string deflated(std::string plain) {
  z_stream stream{};
  EXPECT_EQ(deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
  std::string packed(deflateBound(&stream, static_cast<uLong>(plain.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(plain.data());
  stream.avail_in = static_cast<uInt>(plain.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  packed.resize(packed.size() - stream.avail_out);
  deflateEnd(&stream);
  return packed;
}

std::string localHeader(const std::string& name) {
  return "PK\3\4" + number(20, 2) + number(0, 2) + number(8, 2) + number(0, 4) + number(0, 8) + number(0, 4) +
         number(name.size(), 2) + number(5, 2) + name + "\x99\x99" + number(1, 2) + "x";
}

std::string entry(const std::string& name, std::uint64_t packed, std::uint64_t plain, std::uint64_t offset,
                  Numbers numbers) {
  const bool isLarge = numbers == Numbers::Large;
  const auto here = [isLarge](std::uint64_t value) { return number(isLarge ? kElsewhere : value, 4); };
  std::string extra = "\x99\x99" + number(2, 2) + "xy";
  if (isLarge) {
    extra += number(1, 2) + number(24, 2) + number(plain, 8) + number(packed, 8) + number(offset, 8);
  }
  const std::string comment = "remark";
  return "PK\1\2" + number(20, 2) + number(20, 2) + number(0, 2) + number(8, 2) + number(0, 8) + here(packed) +
         here(plain) + number(name.size(), 2) + number(extra.size(), 2) + number(comment.size(), 2) + number(0, 8) +
         here(offset) + name + extra + comment;
}

std::string end(std::uint64_t count, std::uint64_t size, std::uint64_t offset, Numbers numbers) {
  std::string result;
  if (numbers == Numbers::Large) {
    result = "PK\6\6" + number(44, 8) + number(45, 2) + number(45, 2) + number(0, 8) + number(count, 8) +
             number(count, 8) + number(size, 8) + number(offset, 8);
    result += "PK\6\7" + number(0, 4) + number(offset + size, 8) + number(1, 4);
    size = offset = kElsewhere;
  }
  return result + "PK\5\6" + number(0, 4) + number(count, 2) + number(count, 2) + number(size, 4) + number(offset, 4) +
         number(0, 2);
}

}  // namespace

std::string archiveOf(const ArchiveContent& content, Numbers numbers) {
  std::string bytes;
  std::string directory;
  for (const auto& [name, plain] : content) {
    const std::string packed = deflated(plain);
    directory += entry(name, packed.size(), plain.size(), bytes.size(), numbers);
    bytes += localHeader(name) + packed;
  }
  return bytes + directory + end(content.size(), directory.size(), bytes.size(), numbers);
}

}  // namespace scrivalen::test
