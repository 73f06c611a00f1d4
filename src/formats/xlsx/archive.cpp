#include "formats/xlsx/archive.h"

#include <zlib.h>

#include <cstddef>
#include <string_view>

namespace scrivalen {
namespace {

// APPNOTE 4.3.6 ff.: the records of an archive and the offsets of the fields that are read. Numbers are little-endian.
constexpr std::uint64_t kEndSignature = 0x06054B50;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kEndDirectorySize = 12;
constexpr std::size_t kEndDirectoryOffset = 16;

constexpr std::uint64_t kLocatorSignature = 0x07064B50;
constexpr std::size_t kLocatorSize = 20;
constexpr std::size_t kLocatorEndOffset = 8;
constexpr std::uint64_t kLargeEndSignature = 0x06064B50;
constexpr std::size_t kLargeEndSize = 56;
constexpr std::size_t kLargeEndDirectorySize = 40;
constexpr std::size_t kLargeEndDirectoryOffset = 48;

constexpr std::uint64_t kEntrySignature = 0x02014B50;
constexpr std::size_t kEntrySize = 46;
constexpr std::size_t kEntryPackedSize = 20;
constexpr std::size_t kEntryPlainSize = 24;
constexpr std::size_t kEntryNameLength = 28;
constexpr std::size_t kEntryExtraLength = 30;
constexpr std::size_t kEntryCommentLength = 32;
constexpr std::size_t kEntryOffset = 42;

constexpr std::uint64_t kLocalSignature = 0x04034B50;
constexpr std::size_t kLocalSize = 30;
constexpr std::size_t kLocalNameLength = 26;
constexpr std::size_t kLocalExtraLength = 28;

constexpr std::uint64_t kLargeExtra = 1;  // the id of the extra field for numbers of more than 32 bits
constexpr std::uint64_t kElsewhere = 0xFFFFFFFF;

constexpr std::uint64_t kLargestDirectory = 1u << 26;
constexpr std::uint64_t kLargestUnpacked = 1u << 26;

std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint64_t value = 0;
  for (std::size_t i = size; i-- > 0;) {
    value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  }
  return value;
}

bool begins(std::string_view bytes, std::uint64_t signature) { return number(bytes, 0, 4) == signature; }

std::optional<std::string> bytesAt(NativeFile file, std::uint64_t offset, std::uint64_t size) {
  std::string bytes(static_cast<std::size_t>(size), '\0');
  return readAt(file, offset, bytes.data(), bytes.size()) ? std::optional<std::string>(std::move(bytes)) : std::nullopt;
}

struct Directory {
  std::uint64_t offset;
  std::uint64_t size;
};

// The Zip64 end record; a locator before the usual end record has its offset.
std::optional<Directory> findLargeDirectory(NativeFile archive, std::uint64_t end) {
  if (end < kLocatorSize) {
    return std::nullopt;
  }
  const auto locator = bytesAt(archive, end - kLocatorSize, kLocatorSize);
  if (!locator || !begins(*locator, kLocatorSignature)) {
    return std::nullopt;
  }
  const auto record = bytesAt(archive, number(*locator, kLocatorEndOffset, 8), kLargeEndSize);
  if (!record || !begins(*record, kLargeEndSignature)) {
    return std::nullopt;
  }
  return Directory{number(*record, kLargeEndDirectoryOffset, 8), number(*record, kLargeEndDirectorySize, 8)};
}

std::optional<Directory> findDirectory(NativeFile archive) {
  const auto size = sizeOf(archive);
  if (!size || *size < kEndSize) {
    return std::nullopt;
  }
  const auto record = bytesAt(archive, *size - kEndSize, kEndSize);
  if (!record || !begins(*record, kEndSignature)) {
    return std::nullopt;
  }
  const Directory directory{number(*record, kEndDirectoryOffset, 4), number(*record, kEndDirectorySize, 4)};
  if (directory.offset == kElsewhere || directory.size == kElsewhere) {
    return findLargeDirectory(archive, *size - kEndSize);
  }
  return directory;
}

// The Zip64 extra field has, in this order, those of the three numbers that the entry does not have (APPNOTE 4.5.3).
bool readLargeNumbers(ArchiveMember& member, std::string_view extra) {
  std::string_view numbers;
  while (extra.size() >= 4) {
    const std::size_t size = static_cast<std::size_t>(number(extra, 2, 2));
    if (size > extra.size() - 4) {
      return false;
    }
    if (number(extra, 0, 2) == kLargeExtra) {
      numbers = extra.substr(4, size);
    }
    extra.remove_prefix(4 + size);
  }
  for (std::uint64_t* value : {&member.size, &member.packedSize, &member.offset}) {
    if (*value != kElsewhere) {
      continue;
    }
    if (numbers.size() < 8) {
      return false;
    }
    *value = number(numbers, 0, 8);
    numbers.remove_prefix(8);
  }
  return true;
}

std::optional<ArchiveMember> takeEntry(std::string_view& directory) {
  if (directory.size() < kEntrySize || !begins(directory, kEntrySignature)) {
    return std::nullopt;
  }
  const auto nameLength = static_cast<std::size_t>(number(directory, kEntryNameLength, 2));
  const auto extraLength = static_cast<std::size_t>(number(directory, kEntryExtraLength, 2));
  const std::size_t size =
      kEntrySize + nameLength + extraLength + static_cast<std::size_t>(number(directory, kEntryCommentLength, 2));
  if (size > directory.size()) {
    return std::nullopt;
  }
  ArchiveMember member{std::string(directory.substr(kEntrySize, nameLength)), number(directory, kEntryOffset, 4),
                       number(directory, kEntryPackedSize, 4), number(directory, kEntryPlainSize, 4)};
  if (!readLargeNumbers(member, directory.substr(kEntrySize + nameLength, extraLength))) {
    return std::nullopt;
  }
  directory.remove_prefix(size);
  return member;
}

Bytef* asBytes(std::string& text) { return reinterpret_cast<Bytef*>(text.data()); }

bool inflateInto(std::string& plain, std::string& packed) {
  z_stream stream{};
  if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) {
    return false;
  }
  stream.next_in = asBytes(packed);
  stream.avail_in = static_cast<uInt>(packed.size());
  stream.next_out = asBytes(plain);
  stream.avail_out = static_cast<uInt>(plain.size());
  const bool whole = inflate(&stream, Z_FINISH) == Z_STREAM_END && stream.avail_out == 0;
  inflateEnd(&stream);
  return whole;
}

}  // namespace

std::optional<std::vector<ArchiveMember>> membersOf(NativeFile archive) {
  const auto place = findDirectory(archive);
  if (!place || place->size > kLargestDirectory) {
    return std::nullopt;
  }
  const auto bytes = bytesAt(archive, place->offset, place->size);
  if (!bytes) {
    return std::nullopt;
  }
  std::vector<ArchiveMember> members;
  for (std::string_view rest = *bytes; !rest.empty();) {
    auto member = takeEntry(rest);
    if (!member) {
      return std::nullopt;
    }
    members.push_back(std::move(*member));
  }
  return members;
}

std::optional<std::string> unpacked(NativeFile archive, const ArchiveMember& member) {
  if (member.packedSize > kLargestUnpacked || member.size > kLargestUnpacked) {
    return std::nullopt;
  }
  const auto header = bytesAt(archive, member.offset, kLocalSize);
  if (!header || !begins(*header, kLocalSignature)) {
    return std::nullopt;
  }
  const std::uint64_t offset =
      member.offset + kLocalSize + number(*header, kLocalNameLength, 2) + number(*header, kLocalExtraLength, 2);
  auto packed = bytesAt(archive, offset, member.packedSize);
  std::string plain(static_cast<std::size_t>(member.size), '\0');
  if (!packed || !inflateInto(plain, *packed)) {
    return std::nullopt;
  }
  return plain;
}

}  // namespace scrivalen
