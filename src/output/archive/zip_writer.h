#pragma once

#include "output/compression/deflate.h"
#include "output/output_buffer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen {

/// Writes an archive (ZIP, APPNOTE 6.3) from its beginning to its end, without going back. Its names are UTF-8. The
/// archive may have any size; an entry has less than 4 GiB, packed and unpacked.
class ZipWriter : private ByteSink {
 public:
  static constexpr std::uint64_t kLargestEntry = 0xFFFFFFFE;  ///< in bytes

  /// @param out      not owned; must outlive the archive
  /// @param seconds  the time of all entries, since 1970-01-01 UTC; stored in UTC, to two seconds, in the years 1980 to
  ///                 2107
  /// @param memory   of the compression, as a Deflater has it
  ZipWriter(OutputBuffer& out, std::int64_t seconds, int memory = Deflater::kUsualMemory);
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;
  ~ZipWriter() override = default;

  /// Begins an entry whose content comes in parts, and is compressed. The one before must have ended. More than
  /// kLargestEntry raises std::length_error, at the latest in endEntry, and the archive is then of no use.
  /// @param name  its path, with slashes
  void beginEntry(std::string_view name);
  void write(std::string_view content) { content_.write(content.data(), content.size()); }
  /// Where the content of the entry may be written in place. Belongs to the archive.
  OutputBuffer& content() { return content_; }
  /// How many bytes the entry has so far, unpacked.
  std::uint64_t entrySize() const { return content_.position(); }
  void endEntry();

  /// Writes an entry whose content is at hand, compressed. Raises std::length_error when it is larger than
  /// kLargestEntry.
  void addEntry(std::string_view name, std::string_view content);
  /// The same, as it is: for content that is compressed already, such as pictures.
  void addStored(std::string_view name, std::string_view content);

  /// Writes the directory. Nothing can be added afterwards.
  void finish();

 private:
  enum class Method : std::uint16_t { Stored = 0, Deflated = 8 };

  struct Entry {
    std::string name;
    Method method;
    bool isStreamed;  // its sizes follow its content
    std::uint32_t crc = 0;
    std::uint64_t packedSize = 0;
    std::uint64_t size = 0;
    std::uint64_t offset = 0;
  };

  bool take(const char* data, std::size_t size) override;
  void add(std::string_view name, Method method, std::string_view content, std::string_view packed);
  void writeLocalHeader(Entry& entry);
  void writeCommonFields(const Entry& entry);
  void writeDescriptor(const Entry& entry);
  void writeDirectoryEntry(const Entry& entry);
  void writeLargeEnd(std::uint64_t offset, std::uint64_t size);
  void writeEnd(std::uint64_t offset, std::uint64_t size);
  void putPacked();
  void put(std::uint64_t number, int bytes);
  void put(std::string_view bytes) { out_.write(bytes.data(), bytes.size()); }

  OutputBuffer& out_;
  OutputBuffer content_;
  Deflater deflater_;
  std::string packed_;
  std::uint64_t start_;  // of the archive in the output
  std::uint32_t time_;   // as DOS has it
  std::vector<Entry> entries_;
};

}  // namespace scrivalen
