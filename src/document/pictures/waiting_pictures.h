#pragma once

#include "document/pictures/picture.h"
#include "system/files/files.h"
#include "system/files/work_folder.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace scrivalen::document {

/// Pictures that wait while something else is written: up to kMostBytes of them in memory, the others in one private
/// temporary file. Equal pictures are kept once, as long as the first is in memory.
class WaitingPictures {
 public:
  static constexpr std::size_t kMostBytes = std::size_t{16} << 20;

  explicit WaitingPictures(std::size_t mostBytes = kMostBytes) : mostBytes_(mostBytes) {}

  /// @return the picture's number, from 0
  std::size_t add(const Picture& picture);
  std::size_t size() const { return places_.size(); }
  Picture::Format format(std::size_t picture) const { return places_[picture].format; }
  /// The bytes of a picture. None is added after the first call.
  std::string read(std::size_t picture);

 private:
  struct Place {
    Picture::Format format;
    std::size_t size;
    std::uint64_t offset;                    // in the file
    std::shared_ptr<const Picture> picture;  // null: in the file
  };

  std::size_t equalTo(const Picture& picture, std::size_t hash) const;
  std::uint64_t store(std::string_view bytes);

  const std::size_t mostBytes_;
  std::size_t bytes_ = 0;      // in memory
  std::uint64_t written_ = 0;  // to the file
  std::vector<Place> places_;
  std::unordered_multimap<std::size_t, std::size_t> inMemory_;  // their numbers, by the hash of their bytes
  WorkFolder folder_;
  File file_;
};

}  // namespace scrivalen::document
