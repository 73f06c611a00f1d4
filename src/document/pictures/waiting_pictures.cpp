#include "document/pictures/waiting_pictures.h"

#include "document/plain/temporary_error.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace scrivalen::document {
namespace {

constexpr std::string_view kNotKept = "its temporary file for pictures cannot be completed";

}  // namespace

std::size_t WaitingPictures::add(const Picture& picture) {
  const std::size_t hash = std::hash<std::string_view>()(picture.bytes());
  const std::size_t number = equalTo(picture, hash);
  if (number < places_.size()) {
    return number;
  }
  const std::size_t size = picture.bytes().size();
  if (size <= mostBytes_ - bytes_) {
    places_.push_back({picture.format(), size, 0, picture.shared_from_this()});
    inMemory_.emplace(hash, number);
    bytes_ += size;
  } else {
    places_.push_back({picture.format(), size, store(picture.bytes()), nullptr});
  }
  return number;
}

// The number of an equal picture in memory; that of the next picture if there is none.
std::size_t WaitingPictures::equalTo(const Picture& picture, std::size_t hash) const {
  const auto [first, last] = inMemory_.equal_range(hash);
  const auto found = std::find_if(
      first, last, [&](const auto& known) { return places_[known.second].picture->bytes() == picture.bytes(); });
  return found == last ? places_.size() : found->second;
}

std::uint64_t WaitingPictures::store(std::string_view bytes) {
  if (!file_) {
    if (!folder_.createElsewhere()) {
      raiseTemporaryError("no folder can be created for its temporary file");
    }
    file_ = createNew(folder_.path() + kPathSeparator + L"pictures");
  }
  if (!file_ || !writeAll(file_, bytes.data(), bytes.size())) {
    raiseTemporaryError(kNotKept);
  }
  const std::uint64_t offset = written_;
  written_ += bytes.size();
  return offset;
}

std::string WaitingPictures::read(std::size_t picture) {
  const Place& place = places_[picture];
  if (place.picture) {
    return std::string(place.picture->bytes());
  }
  if (!file_.close()) {
    raiseTemporaryError(kNotKept);
  }
  std::string bytes(place.size, '\0');
  const File file = openForReading(folder_.path() + kPathSeparator + L"pictures");
  if (!file || !readAt(file, place.offset, bytes.data(), bytes.size())) {
    raiseTemporaryError("its temporary file for pictures cannot be read");
  }
  return bytes;
}

}  // namespace scrivalen::document
