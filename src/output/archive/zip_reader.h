#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace scrivalen {

/// Why an archive cannot be read: the end of a sentence, such as "it is not an archive (ZIP)".
class ArchiveError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads entries of an archive (ZIP, APPNOTE 6.3) that is in memory, stored or deflated. An archive of an unknown
/// origin does no harm: every number in it is checked. Those in parts or beyond the limits of plain numbers (ZIP64),
/// and encrypted entries, are errors.
class ZipReader {
 public:
  /// Reads the directory. Names that differ only in the case of ASCII letters are the same; two entries of one name are
  /// an error.
  /// @param bytes  not owned; must outlive this object
  explicit ZipReader(std::string_view bytes);

  bool has(std::string_view name) const;
  /// The content of an entry. Raises ArchiveError when there is none, or it is damaged.
  /// @param most  the largest size that is read, in bytes
  std::string read(std::string_view name, std::size_t most) const;

 private:
  struct Entry {
    std::string name;  // as the archive has it
    std::uint64_t flags;
    std::uint64_t method;
    std::uint32_t crc;
    std::uint64_t packedSize;
    std::uint64_t size;
    std::uint64_t offset;
  };

  std::uint64_t endRecord() const;
  void readDirectory(std::uint64_t end);
  std::string_view packedBytes(const Entry& entry) const;
  std::uint64_t number(std::uint64_t at, int bytes) const;

  std::string_view bytes_;
  std::uint64_t directory_ = 0;           // where it begins
  std::map<std::string, Entry> entries_;  // by their names in lower case
};

}  // namespace scrivalen
