#include "formats/pdf/typeset/fonts/cff_charset.h"

#include <algorithm>
#include <cstddef>

namespace scrivalen::typeset {
namespace {

// Reads bytes one after another; zeros past the end.
class Reader {
 public:
  Reader(std::string_view bytes, std::size_t at) : bytes_(bytes), at_(at) {}
  bool isAtEnd() const { return at_ >= bytes_.size(); }
  std::size_t place() const { return at_; }
  void skip(std::size_t count) { at_ += std::min(count, bytes_.size() - std::min(at_, bytes_.size())); }
  unsigned one() {
    const unsigned byte = isAtEnd() ? 0 : static_cast<unsigned char>(bytes_[at_]);
    at_ += isAtEnd() ? 0 : 1;
    return byte;
  }
  unsigned number(unsigned size) {
    unsigned value = 0;
    for (unsigned i = 0; i < size; ++i) {
      value = value << 8 | one();
    }
    return value;
  }

 private:
  std::string_view bytes_;
  std::size_t at_;
};

struct Index {
  unsigned count = 0;
  std::string_view first;  // its first object
  std::size_t end = 0;     // where the next part of the table begins
};

Index indexAt(std::string_view cff, std::size_t at) {
  Reader reader(cff, at);
  Index index;
  index.count = reader.number(2);
  index.end = reader.place();
  if (index.count == 0) {
    return index;
  }
  const unsigned size = std::min(reader.one(), 4u);
  const unsigned first = reader.number(size);
  const unsigned second = reader.number(size);
  reader.skip(std::size_t{std::max(index.count, 2u) - 2} * size);
  const unsigned last = index.count == 1 ? second : reader.number(size);
  const std::size_t data = reader.place() - 1;  // offsets are counted from 1
  if (first < 1 || second < first || last < second || last > cff.size() - std::min(data, cff.size())) {
    return {};
  }
  index.first = cff.substr(data + first, second - first);
  index.end = data + last;
  return index;
}

// What the top dictionary says that matters here.
struct TopDict {
  bool isCidKeyed = false;
  std::size_t charset = 0;
  std::size_t charStrings = 0;
};

TopDict topDictOf(std::string_view bytes) {
  constexpr unsigned kCharset = 15;
  constexpr unsigned kCharStrings = 17;
  constexpr unsigned kEscape = 12;
  constexpr unsigned kRos = 30;
  TopDict dict;
  Reader reader(bytes, 0);
  std::size_t operand = 0;
  while (!reader.isAtEnd()) {
    const unsigned byte = reader.one();
    if (byte >= 32 && byte <= 246) {
      operand = byte - std::min(byte, 139u);
    } else if (byte >= 247 && byte <= 250) {
      operand = (byte - 247) * 256 + reader.one() + 108;
    } else if (byte == 28) {
      operand = reader.number(2);
    } else if (byte == 29) {
      operand = reader.number(4);
    } else if (byte == 30) {  // a real number
      while (!reader.isAtEnd() && (reader.one() & 0xF) != 0xF) {
      }
    } else if (byte >= 251) {
      reader.skip(1);
      operand = 0;
    } else if (byte == kEscape) {
      dict.isCidKeyed = dict.isCidKeyed || reader.one() == kRos;
    } else if (byte == kCharset) {
      dict.charset = operand;
    } else if (byte == kCharStrings) {
      dict.charStrings = operand;
    }
  }
  return dict;
}

}  // namespace

std::vector<std::uint16_t> cidsOf(std::string_view cff) {
  constexpr std::size_t kPredefined = 2;  // and less
  const std::size_t headerSize = Reader(cff, 2).one();
  const Index names = indexAt(cff, headerSize);
  const TopDict dict = topDictOf(indexAt(cff, names.end).first);
  std::vector<std::uint16_t> cids;
  if (!dict.isCidKeyed || dict.charset <= kPredefined) {
    return cids;
  }
  const std::size_t count = Reader(cff, dict.charStrings).number(2);
  Reader reader(cff, dict.charset);
  const unsigned format = reader.one();
  cids.push_back(0);
  while (cids.size() < count && !reader.isAtEnd()) {
    unsigned cid = reader.number(2);
    unsigned further = format == 0 ? 0 : reader.number(format == 1 ? 1 : 2);
    for (++further; further > 0 && cids.size() < count; --further) {
      cids.push_back(static_cast<std::uint16_t>(cid++));
    }
  }
  cids.resize(count);
  return cids;
}

}  // namespace scrivalen::typeset
