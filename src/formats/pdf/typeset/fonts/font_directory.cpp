#include "formats/pdf/typeset/fonts/font_directory.h"

#include "text/names/font_path.h"

#include <cstddef>
#include <cstdint>

namespace scrivalen::typeset {
namespace {

constexpr std::uint32_t kTrueType = 0x00010000;
constexpr std::uint32_t kAppleTrueType = 0x74727565;  // true
constexpr std::uint32_t kOpenType = 0x4F54544F;       // OTTO
constexpr std::uint32_t kCollection = 0x74746366;     // ttcf

constexpr std::string_view kNoFont = "it is no TrueType or OpenType font";
constexpr std::string_view kCutOff = "the file is cut off";

// Numbers of a file; zeros past its end.
class Numbers {
 public:
  explicit Numbers(std::string_view bytes) : bytes_(bytes) {}
  bool has(std::uint64_t at, std::uint64_t size) const { return at <= bytes_.size() && size <= bytes_.size() - at; }
  std::uint32_t twoAt(std::uint64_t at) const { return byteAt(at) << 8 | byteAt(at + 1); }
  std::uint32_t fourAt(std::uint64_t at) const { return twoAt(at) << 16 | twoAt(at + 2); }

 private:
  std::uint32_t byteAt(std::uint64_t at) const {
    return at < bytes_.size() ? static_cast<unsigned char>(bytes_[static_cast<std::size_t>(at)]) : 0;
  }

  std::string_view bytes_;
};

std::string problemOfTables(const Numbers& numbers, std::uint64_t begin) {
  constexpr std::uint64_t kHeaderSize = 12;
  constexpr std::uint64_t kRecordSize = 16;
  if (!numbers.has(begin, kHeaderSize)) {
    return std::string(kCutOff);
  }
  const std::uint32_t version = numbers.fourAt(begin);
  if (version != kTrueType && version != kAppleTrueType && version != kOpenType) {
    return std::string(kNoFont);
  }
  const std::uint64_t count = numbers.twoAt(begin + 4);
  for (std::uint64_t i = 0; i < count; ++i) {
    const std::uint64_t record = begin + kHeaderSize + i * kRecordSize;
    if (!numbers.has(record, kRecordSize) || !numbers.has(numbers.fourAt(record + 8), numbers.fourAt(record + 12))) {
      return std::string(kCutOff);
    }
  }
  return std::string();
}

std::string problemOfIndex(unsigned index) {
  std::string problem = "it is no collection and has no font ";
  return problem.append(index == kLargestFontIndex ? "of so large a number" : std::to_string(index));
}

}  // namespace

std::string problemOf(std::string_view data, unsigned index) {
  constexpr std::uint64_t kOffsets = 12;  // of the fonts of a collection
  const Numbers numbers(data);
  if (numbers.fourAt(0) != kCollection) {
    return index == 0 ? problemOfTables(numbers, 0) : problemOfIndex(index);
  }
  const std::uint32_t count = numbers.fourAt(8);
  const std::uint64_t place = kOffsets + std::uint64_t{4} * index;
  if (index >= count) {
    return count == 0 ? "the collection has no fonts"
                      : std::string("the collection has the fonts 0 to ").append(std::to_string(count - 1));
  }
  return numbers.has(place, 4) ? problemOfTables(numbers, numbers.fourAt(place)) : std::string(kCutOff);
}

}  // namespace scrivalen::typeset
