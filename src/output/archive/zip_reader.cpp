#include "output/archive/zip_reader.h"

#include "output/compression/crc.h"
#include "output/compression/deflate.h"
#include "text/ascii.h"

#include <optional>
#include <utility>

namespace scrivalen {
namespace {

constexpr std::uint64_t kLocalMark = 0x04034B50;
constexpr std::uint64_t kEntryMark = 0x02014B50;
constexpr std::uint64_t kEndOfDirectoryMark = 0x06054B50;

// The fixed sizes of the records, in bytes.
constexpr std::uint64_t kLocalSize = 30;
constexpr std::uint64_t kEntrySize = 46;
constexpr std::uint64_t kEndSize = 22;

constexpr std::uint64_t kMost16 = 0xFFFF;
constexpr std::uint64_t kMost32 = 0xFFFFFFFF;
constexpr std::uint64_t kStoredMethod = 0;
constexpr std::uint64_t kDeflatedMethod = 8;
constexpr std::uint64_t kEncryptedFlags = 1u << 0 | 1u << 6 | 1u << 13;

[[noreturn]] void failDirectory() { throw ArchiveError("the directory of the archive is damaged"); }

[[noreturn]] void failEntry(std::string_view name, std::string_view what) {
  throw ArchiveError(std::string("its part '").append(name).append("' ").append(what));
}

[[noreturn]] void failDamaged(std::string_view name) { failEntry(name, "is damaged"); }

std::string sizeText(std::size_t bytes) {
  constexpr std::size_t kMebibyte = std::size_t{1} << 20;
  const bool isWhole = bytes > 0 && bytes % kMebibyte == 0;
  return std::to_string(isWhole ? bytes / kMebibyte : bytes).append(isWhole ? " MiB" : " bytes");
}

// Inflates exactly the stated bytes, so that a text that goes on is not unpacked.
std::string inflatedEntry(std::string_view name, std::string_view packed, std::size_t size) {
  std::string content(size, '\0');
  Inflater inflater(packed, DeflateFormat::Raw);
  char further = 0;
  if (inflater.read(content.data(), size) != size || inflater.read(&further, 1) != 0 || !inflater.isAtEnd() ||
      inflater.used() != packed.size()) {
    failDamaged(name);
  }
  return content;
}

}  // namespace

ZipReader::ZipReader(std::string_view bytes) : bytes_(bytes) { readDirectory(endRecord()); }

// It is followed by a comment of up to 64 KiB, which may look like it (APPNOTE 4.3.16). Programs that send a file may
// have added bytes to it: the last record whose comment is whole counts when none ends the file.
std::uint64_t ZipReader::endRecord() const {
  std::optional<std::uint64_t> last;
  for (std::uint64_t rest = 0; rest <= kMost16 && rest + kEndSize <= bytes_.size(); ++rest) {
    const std::uint64_t at = bytes_.size() - kEndSize - rest;
    if (number(at, 4) != kEndOfDirectoryMark) {
      continue;
    }
    const std::uint64_t comment = number(at + 20, 2);
    if (comment == rest) {
      return at;
    }
    if (comment < rest && !last) {
      last = at;
    }
  }
  if (last) {
    return *last;
  }
  throw ArchiveError(bytes_.starts_with("PK\x03\x04") ? "the archive is cut off" : "it is not an archive (ZIP)");
}

void ZipReader::readDirectory(std::uint64_t end) {
  const std::uint64_t count = number(end + 10, 2);
  const std::uint64_t size = number(end + 12, 4);
  directory_ = number(end + 16, 4);
  if (count == kMost16 || size == kMost32 || directory_ == kMost32) {
    throw ArchiveError("the archive needs ZIP64");
  }
  if (number(end + 4, 2) != 0 || number(end + 6, 2) != 0) {
    throw ArchiveError("it is one of several parts of an archive");
  }
  if (number(end + 8, 2) != count || directory_ + size != end) {
    failDirectory();
  }
  std::uint64_t at = directory_;
  for (std::uint64_t i = 0; i < count; ++i) {
    if (end - at < kEntrySize || number(at, 4) != kEntryMark) {
      failDirectory();
    }
    const std::uint64_t nameSize = number(at + 28, 2);
    const std::uint64_t whole = kEntrySize + nameSize + number(at + 30, 2) + number(at + 32, 2);
    if (end - at < whole) {
      failDirectory();
    }
    std::string name(bytes_.substr(at + kEntrySize, nameSize));
    std::string key = asciiLowered(std::string_view(name));
    Entry entry{
        std::move(name),    number(at + 8, 2),  number(at + 10, 2), static_cast<std::uint32_t>(number(at + 16, 4)),
        number(at + 20, 4), number(at + 24, 4), number(at + 42, 4)};
    if (const auto [known, isNew] = entries_.try_emplace(std::move(key), std::move(entry)); !isNew) {
      failEntry(known->second.name, "is in it twice");
    }
    at += whole;
  }
  if (at != end) {
    failDirectory();
  }
}

bool ZipReader::has(std::string_view name) const { return entries_.contains(asciiLowered(name)); }

std::string ZipReader::read(std::string_view name, std::size_t most) const {
  const auto found = entries_.find(asciiLowered(name));
  if (found == entries_.end()) {
    failEntry(name, "is missing");
  }
  const Entry& entry = found->second;
  if ((entry.flags & kEncryptedFlags) != 0) {
    failEntry(name, "is encrypted");
  }
  if (entry.packedSize == kMost32 || entry.size == kMost32 || entry.offset == kMost32) {
    throw ArchiveError("the archive needs ZIP64");
  }
  if (entry.method != kStoredMethod && entry.method != kDeflatedMethod) {
    failEntry(name, "is compressed in another way than with deflate");
  }
  if (entry.size > most) {
    failEntry(name, "has more than " + sizeText(most));
  }
  const std::string_view packed = packedBytes(entry);
  if (entry.method == kStoredMethod && packed.size() != entry.size) {
    failDamaged(name);
  }
  std::string content = entry.method == kStoredMethod
                            ? std::string(packed)
                            : inflatedEntry(name, packed, static_cast<std::size_t>(entry.size));
  if (crc32Of(content) != entry.crc) {
    failDamaged(name);
  }
  return content;
}

// The sizes before the content may be missing; those of the directory count.
std::string_view ZipReader::packedBytes(const Entry& entry) const {
  if (directory_ < kLocalSize || entry.offset > directory_ - kLocalSize || number(entry.offset, 4) != kLocalMark) {
    failDamaged(entry.name);
  }
  const std::uint64_t nameSize = number(entry.offset + 26, 2);
  const std::uint64_t begin = entry.offset + kLocalSize + nameSize + number(entry.offset + 28, 2);
  if (begin > directory_ || entry.packedSize > directory_ - begin ||
      bytes_.substr(entry.offset + kLocalSize, nameSize) != entry.name) {
    failDamaged(entry.name);
  }
  return bytes_.substr(begin, entry.packedSize);
}

// @param at  of a number that is inside the bytes
std::uint64_t ZipReader::number(std::uint64_t at, int bytes) const {
  std::uint64_t value = 0;
  for (int i = bytes; i-- > 0;) {
    value = value << 8 | static_cast<unsigned char>(bytes_[at + static_cast<std::uint64_t>(i)]);
  }
  return value;
}

}  // namespace scrivalen
