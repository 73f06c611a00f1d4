#include "formats/pdf/typeset/file/cross_references.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <algorithm>

namespace scrivalen::typeset {
namespace {

constexpr int kRowsLevel = 3;  // zlib's

constexpr unsigned kIndexBits = 8;
constexpr unsigned kKindShift = 48;
constexpr std::uint64_t kAtOffset = std::uint64_t{1} << kKindShift;
constexpr std::uint64_t kInStream = std::uint64_t{2} << kKindShift;
constexpr std::uint64_t kFieldMask = (std::uint64_t{1} << 40) - 1;

// A row is a byte for its filter and the seven bytes of a place.
constexpr std::size_t kRowSize = 8;
constexpr std::uint64_t kUp = std::uint64_t{2} << 56;
constexpr std::uint64_t kHighBits = 0x8080808080808080;

// The difference of each byte of two numbers from the one above it: the PNG filter Up.
std::uint64_t differenceOfBytes(std::uint64_t value, std::uint64_t above) {
  return ((value | kHighBits) - (above & ~kHighBits)) ^ ((value ^ ~above) & kHighBits);
}

void putBigEndian(char* out, std::uint64_t value) {
  for (std::size_t i = kRowSize; i > 0; value >>= 8) {
    out[--i] = static_cast<char>(static_cast<unsigned char>(value));
  }
}

void appendZeroPadded(std::string& out, std::uint64_t value, std::size_t digits) {
  std::string number;
  appendInteger(number, static_cast<std::int64_t>(value));
  out.append(digits - std::min(number.size(), digits), '0').append(number);
}

// FNV-1a.
std::uint64_t hashWith(std::uint64_t hash, std::uint64_t byte) { return (hash ^ byte) * 1099511628211u; }

}  // namespace

int CrossReferences::newNumber() {
  if (blocks_.empty() || blocks_.back().places.size() == kBlock || blocks_.back().isCompressed) {
    blocks_.emplace_back();
  }
  Block& block = blocks_.back();
  block.places.push_back(0);
  block.missing += count_ == 0 ? 0 : 1;
  return static_cast<int>(count_++);
}

void CrossReferences::setOffset(int number, std::uint64_t offset) { set(number, kAtOffset | offset << kIndexBits); }

void CrossReferences::setInStream(int number, int stream, std::size_t index) {
  set(number, kInStream | static_cast<std::uint64_t>(stream) << kIndexBits | index);
}

void CrossReferences::set(int number, std::uint64_t place) {
  const std::size_t index = static_cast<std::size_t>(number) / kBlock;
  const std::size_t at = static_cast<std::size_t>(number) % kBlock;
  Block& block = blocks_[index];
  block.places[at] = place;
  --block.missing;
  if (at + 1 == kBlock) {
    block.last = place;
    compressIfReady(index + 1);
  }
  compressIfReady(index);
}

// A block's first row needs the one above it.
void CrossReferences::compressIfReady(std::size_t block) {
  const bool isFull = block < blocks_.size() && blocks_[block].places.size() == kBlock && blocks_[block].missing == 0;
  if (form_ == Form::Stream && isFull && (block == 0 || blocks_[block - 1].last != 0)) {
    compress(block);
  }
}

void CrossReferences::compress(std::size_t index) {
  Block& block = blocks_[index];
  std::uint64_t above = index == 0 ? 0 : blocks_[index - 1].last;
  scratch_.resize(block.places.size() * kRowSize);
  char* out = scratch_.data();
  for (const std::uint64_t place : block.places) {
    putBigEndian(out, kUp | differenceOfBytes(place, above));
    out += kRowSize;
    above = place;
  }
  if (!deflater_) {
    deflater_.emplace(kRowsLevel);
  }
  block.rows = deflater_->compress(scratch_);
  std::vector<std::uint64_t>().swap(block.places);  // which gives the memory back
  block.isCompressed = true;
}

std::uint64_t CrossReferences::finish(std::uint64_t hash) {
  for (std::size_t i = 0; i < blocks_.size(); ++i) {
    if (form_ == Form::Stream && !blocks_[i].isCompressed) {
      compress(i);
    }
    for (const char c : blocks_[i].rows.bytes) {
      hash = hashWith(hash, static_cast<unsigned char>(c));
    }
    for (std::uint64_t place : blocks_[i].places) {
      for (std::size_t byte = 0; byte < sizeof place; ++byte, place >>= 8) {
        hash = hashWith(hash, place & 0xFF);
      }
    }
  }
  return hash;
}

std::uint64_t CrossReferences::streamSize() const {
  std::uint64_t size = PieceDeflater::kBegin.size() + endOfPieces(0).size();
  for (const Block& block : blocks_) {
    size += block.rows.bytes.size();
  }
  return size;
}

void CrossReferences::writeStream(OutputBuffer& out) const {
  out.write(PieceDeflater::kBegin.data(), PieceDeflater::kBegin.size());
  std::uint32_t checksum = 1;
  for (const Block& block : blocks_) {
    out.write(block.rows.bytes.data(), block.rows.bytes.size());
    checksum = checksumWith(checksum, block.rows);
  }
  const std::string end = endOfPieces(checksum);
  out.write(end.data(), end.size());
}

void CrossReferences::writeTable(OutputBuffer& out) const {
  constexpr std::string_view kFreeObject = "0000000000 65535 f \n";
  std::string rows;
  for (const Block& block : blocks_) {
    rows.clear();
    for (const std::uint64_t place : block.places) {
      if (place == 0) {
        rows += kFreeObject;
      } else {
        appendZeroPadded(rows, place >> kIndexBits & kFieldMask, 10);
        rows += " 00000 n \n";
      }
    }
    out.write(rows.data(), rows.size());
  }
}

}  // namespace scrivalen::typeset
