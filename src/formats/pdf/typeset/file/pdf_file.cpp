#include "formats/pdf/typeset/file/pdf_file.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "output/compression/deflate.h"

#include <algorithm>
#include <array>

namespace scrivalen::typeset {
namespace {

// By trial on a table of a million cells: a higher level takes more time than it saves in size.
constexpr int kLevel = 1;
constexpr int kPlacesLevel = 3;  // zlib's

constexpr std::size_t kObjectsInStream = 128;
constexpr std::size_t kBytesInStream = 32768;

// The place of an object: the offset in the file, or with kInStream the number of its object stream, and then its index
// there. 0 is an object that was never written.
constexpr std::uint64_t kInStream = std::uint64_t{1} << 63;
constexpr unsigned kIndexBits = 16;

constexpr std::string_view kHeader = "%PDF-1.7\n%\xE2\xE3\xCF\xD3\n";
constexpr std::string_view kHeaderOf14 = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";

// An entry of the cross-reference stream: a kind, an offset or number, an index.
constexpr std::size_t kEntrySize = 1 + 5 + 1;
constexpr std::size_t kRowsAtOnce = 65536;  // bytes of them that are compressed at once

void putBigEndian(char* out, std::uint64_t value, std::size_t size) {
  while (size > 0) {
    out[--size] = static_cast<char>(static_cast<unsigned char>(value));
    value >>= 8;
  }
}

std::array<char, kEntrySize> entryOf(std::uint64_t place) {
  std::array<char, kEntrySize> entry{};
  const bool isInStream = (place & kInStream) != 0;
  entry[0] = static_cast<char>(place == 0 ? 0 : isInStream ? 2 : 1);
  putBigEndian(&entry[1], isInStream ? (place & ~kInStream) >> kIndexBits : place, 5);
  entry[6] = static_cast<char>(static_cast<unsigned char>(isInStream ? place & 0xFF : 0));
  return entry;
}

void appendZeroPadded(std::string& out, std::uint64_t value, std::size_t digits) {
  std::string number;
  appendInteger(number, static_cast<std::int64_t>(value));
  out.append(digits - std::min(number.size(), digits), '0').append(number);
}

constexpr std::uint64_t kHashBegin = 14695981039346656037u;  // FNV-1a

std::uint64_t hashOf(std::uint64_t value, std::uint64_t hash) {
  for (int i = 0; i < 8; ++i, value >>= 8) {
    hash = (hash ^ (value & 0xFF)) * 1099511628211u;
  }
  return hash;
}

}  // namespace

PdfFile::PdfFile(OutputBuffer& out, Standard standard) : out_(out), standard_(standard), compressor_(kLevel) {}

void PdfFile::begin() {
  const std::string_view header = standard_ == Standard::A1b ? kHeaderOf14 : kHeader;
  out_.write(header.data(), header.size());
}

int PdfFile::newNumber() {
  places_.push_back(0);
  return static_cast<int>(places_.size());
}

void PdfFile::setPlace(int number, std::uint64_t place) { places_[static_cast<std::size_t>(number) - 1] = place; }

void PdfFile::writeObject(int number, std::string_view object) {
  if (standard_ == Standard::A1b) {
    beginObject(number);
    scratch_.append(object).append("\nendobj\n");
    out_.write(scratch_.data(), scratch_.size());
    return;
  }
  addTo(waiting_, number, object);
}

void PdfFile::writeStructureObject(int number, std::string_view object) { addTo(waitingStructure_, number, object); }

void PdfFile::addTo(ObjectStream& stream, int number, std::string_view object) {
  if (stream.count == 0) {
    stream.number = newNumber();
  }
  setPlace(number, kInStream | static_cast<std::uint64_t>(stream.number) << kIndexBits | stream.count);
  appendInteger(stream.places, number);
  stream.places += ' ';
  appendInteger(stream.places, static_cast<std::int64_t>(stream.objects.size()));
  stream.places += ' ';
  stream.objects.append(object).append("\n");
  ++stream.count;
  if (stream.count == kObjectsInStream || stream.objects.size() >= kBytesInStream) {
    writeWaiting(stream);
  }
}

void PdfFile::writeWaiting(ObjectStream& stream) {
  if (stream.count == 0) {
    return;
  }
  std::string entries = "/Type/ObjStm/N ";
  appendInteger(entries, static_cast<std::int64_t>(stream.count));
  entries += "/First ";
  appendInteger(entries, static_cast<std::int64_t>(stream.places.size()));
  stream.count = 0;
  stream.places.append(stream.objects);
  writeStream(stream.number, entries, stream.places);
  stream.places.clear();
  stream.objects.clear();
}

void PdfFile::beginObject(int number) {
  setPlace(number, out_.position());
  scratch_.clear();
  appendInteger(scratch_, number);
  scratch_ += " 0 obj\n";
}

void PdfFile::writeStream(int number, std::string_view entries, std::string_view data) {
  compressed_.clear();
  compressor_.compress(data, compressed_);
  std::string all(entries);
  all += "/Filter/FlateDecode";
  writeEncodedStream(number, all, compressed_);
}

void PdfFile::writeEncodedStream(int number, std::string_view entries, std::string_view data) {
  beginObject(number);
  scratch_.append("<<").append(entries).append("/Length ");
  appendInteger(scratch_, static_cast<std::int64_t>(data.size()));
  scratch_ += ">>stream\n";
  out_.write(scratch_.data(), scratch_.size());
  out_.write(data.data(), data.size());
  constexpr std::string_view kEnd = "\nendstream\nendobj\n";
  out_.write(kEnd.data(), kEnd.size());
}

void PdfFile::finish(const FileRoots& roots) {
  if (standard_ == Standard::A1b) {
    return writeCrossReferenceTable(roots);
  }
  writeWaiting(waitingStructure_);
  writeWaiting(waiting_);
  writeCrossReferences(roots);
}

// What ends a file of each kind. Files for archives have an identifier (PDF 1.7, 14.4), here from the places of all
// objects, so that equal files have the same.
std::string PdfFile::trailerEntries(const FileRoots& roots) const {
  std::string entries = "/Root ";
  appendReference(entries, roots.catalog);
  entries += "/Info ";
  appendReference(entries, roots.information);
  if (standard_ != Standard::None) {
    std::uint64_t hash = hashOf(roots.identity, kHashBegin);
    for (const std::uint64_t place : places_) {
      hash = hashOf(place, hash);
    }
    std::string identifier;
    for (const std::uint64_t half : {hash, hashOf(hash, kHashBegin)}) {
      appendHex(identifier, half, 16);
    }
    entries.append("/ID[<").append(identifier).append("><").append(identifier).append(">]");
  }
  return entries;
}

// PDF 1.4, 3.4.3. The table leaves in parts, as it may be long.
void PdfFile::writeCrossReferenceTable(const FileRoots& roots) {
  constexpr std::size_t kPart = 32768;
  const std::uint64_t begin = out_.position();
  std::string part = "xref\n0 ";
  appendInteger(part, static_cast<std::int64_t>(places_.size()) + 1);
  part += "\n0000000000 65535 f \n";
  for (const std::uint64_t place : places_) {
    appendZeroPadded(part, place, 10);
    part += place == 0 ? " 65535 f \n" : " 00000 n \n";
    if (part.size() >= kPart) {
      out_.write(part.data(), part.size());
      part.clear();
    }
  }
  part += "trailer\n<</Size ";
  appendInteger(part, static_cast<std::int64_t>(places_.size()) + 1);
  part.append(trailerEntries(roots)).append(">>\nstartxref\n");
  appendInteger(part, static_cast<std::int64_t>(begin));
  part += "\n%%EOF\n";
  out_.write(part.data(), part.size());
}

void PdfFile::writeCrossReferences(const FileRoots& roots) {
  const std::uint64_t begin = out_.position();
  const int number = newNumber();
  setPlace(number, begin);
  // Each entry as its difference from the one above it (the PNG filter Up), which is mostly zeros.
  std::string rows;
  compressed_.clear();
  Deflater deflater(kPlacesLevel);
  deflater.begin();
  std::array<char, kEntrySize> above{};
  const auto add = [&](const std::array<char, kEntrySize>& entry) {
    constexpr char kUp = 2;
    rows += kUp;
    for (std::size_t i = 0; i < kEntrySize; ++i) {
      rows += static_cast<char>(static_cast<unsigned char>(entry[i]) - static_cast<unsigned char>(above[i]));
    }
    above = entry;
    if (rows.size() >= kRowsAtOnce) {
      deflater.add(rows, compressed_);
      rows.clear();
    }
  };
  add(entryOf(0));
  for (const std::uint64_t place : places_) {
    add(entryOf(place));
  }
  deflater.add(rows, compressed_);
  deflater.end(compressed_);
  std::string entries = "/Filter/FlateDecode/Type/XRef/Size ";
  appendInteger(entries, static_cast<std::int64_t>(places_.size()) + 1);
  entries.append("/W[1 5 1]/DecodeParms<</Predictor 12/Columns 7>>").append(trailerEntries(roots));
  writeEncodedStream(number, entries, compressed_);
  std::string end = "startxref\n";
  appendInteger(end, static_cast<std::int64_t>(begin));
  end += "\n%%EOF\n";
  out_.write(end.data(), end.size());
}

}  // namespace scrivalen::typeset
