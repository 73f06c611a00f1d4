#include "support/pdf/pdf_file_reader.h"

#include <zlib.h>

#include <cstdlib>
#include <optional>
#include <sstream>
#include <utility>

namespace scrivalen::test {
namespace {

constexpr std::size_t kColumns = 7;  // bytes of an entry: kind, place of five bytes, index

// What begins at an offset; empty past the end.
std::string_view from(std::string_view text, std::size_t offset) {
  return offset <= text.size() ? text.substr(offset) : std::string_view();
}

// The integer after a key of a dictionary; none without it.
std::optional<std::size_t> sizeAfter(std::string_view dictionary, std::string_view key) {
  const std::size_t found = dictionary.find(key);
  if (found == dictionary.npos) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(std::atoll(std::string(dictionary.substr(found + key.size(), 20)).c_str()));
}

std::size_t bigEndian(std::string_view bytes) {
  std::size_t value = 0;
  for (const char c : bytes) {
    value = value << 8 | static_cast<unsigned char>(c);
  }
  return value;
}

// Nothing unless the bytes are exactly one compressed stream.
std::optional<std::string> wholeOf(std::string_view compressed) {
  z_stream stream{};
  std::string input(compressed);
  stream.next_in = reinterpret_cast<Bytef*>(input.data());
  stream.avail_in = static_cast<uInt>(input.size());
  int state = inflateInit(&stream);
  std::string text;
  std::string piece(65536, '\0');
  while (state == Z_OK) {
    stream.next_out = reinterpret_cast<Bytef*>(piece.data());
    stream.avail_out = static_cast<uInt>(piece.size());
    state = inflate(&stream, Z_NO_FLUSH);
    text.append(piece, 0, piece.size() - stream.avail_out);
  }
  const bool isWhole = state == Z_STREAM_END && stream.avail_in == 0;
  inflateEnd(&stream);
  return isWhole ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace

PdfFileReader::PdfFileReader(std::string file) : file_(std::move(file)) { read(); }

bool PdfFileReader::expect(bool good, const std::string& problem) {
  if (!good) {
    problems_.push_back(problem);
  }
  return good;
}

void PdfFileReader::read() {
  const std::string_view file = file_;
  expect(file.starts_with("%PDF-1.7\n"), "it does not begin as PDF 1.7");
  constexpr std::string_view kStart = "startxref\n";
  const std::size_t start = file.rfind(kStart);
  if (!expect(start != file.npos && file.ends_with("\n%%EOF\n"), "it has no end")) {
    return;
  }
  const std::size_t offset = sizeAfter(file.substr(start), kStart).value_or(0);
  const int number = std::atoi(std::string(from(file, offset).substr(0, 12)).c_str());
  const Object table = readAt(offset, number);
  trailer_ = table.dictionary;
  expect(trailer_.find("/Type/XRef") != trailer_.npos &&
             trailer_.find("/W[1 5 1]/DecodeParms<</Predictor 12/Columns 7>>") != trailer_.npos,
         "the cross-reference stream has other entries");
  readEntries(unfiltered(table.stream));
  expect(sizeAfter(trailer_, "/Size ") == entries_.size(), "the number of cross-references is wrong");
}

std::string PdfFileReader::decoded(const std::string& dictionary, std::string_view data, int number) {
  if (dictionary.find("/Filter/FlateDecode") == dictionary.npos) {
    return std::string(data);
  }
  const auto text = wholeOf(data);
  expect(text.has_value(), "stream " + std::to_string(number) + " is not compressed as it says");
  return text.value_or(std::string());
}

// Undoes the PNG filter Up: each byte is its difference from the one above it.
std::string PdfFileReader::unfiltered(const std::string& rows) {
  expect(rows.size() % (kColumns + 1) == 0, "the last cross-reference is not whole");
  std::string table;
  std::string above(kColumns, '\0');
  for (std::size_t at = 0; at + kColumns < rows.size(); at += kColumns + 1) {
    expect(rows[at] == 2, "a row of cross-references has another filter");
    for (std::size_t i = 0; i < kColumns; ++i) {
      above[i] = static_cast<char>(static_cast<unsigned char>(above[i]) + static_cast<unsigned char>(rows[at + 1 + i]));
    }
    table += above;
  }
  return table;
}

void PdfFileReader::readEntries(const std::string& table) {
  for (std::size_t at = 0; at < table.size(); at += kColumns) {
    const std::string_view row(table.data() + at, kColumns);
    entries_.push_back({row[0], bigEndian(row.substr(1, 5)), bigEndian(row.substr(6))});
  }
  for (std::size_t i = 1; i < entries_.size(); ++i) {
    if (entries_[i].kind == 1) {
      objects_[static_cast<int>(i)] = readAt(entries_[i].place, static_cast<int>(i));
    }
  }
  for (std::size_t i = 1; i < entries_.size(); ++i) {
    if (entries_[i].kind == 2) {
      readFromStream(static_cast<int>(i), entries_[i]);
    }
  }
}

PdfFileReader::Object PdfFileReader::readAt(std::size_t offset, int number) {
  const std::string begin = std::to_string(number) + " 0 obj\n";
  std::string_view text = from(file_, offset);
  constexpr std::string_view kStream = "stream\n";
  constexpr std::string_view kEnd = "\nendstream\nendobj\n";
  const std::size_t data = text.find(kStream);
  if (!expect(text.starts_with(begin) && data != text.npos,
              "object " + std::to_string(number) + " is not at " + std::to_string(offset))) {
    return {};
  }
  Object object;
  object.dictionary = text.substr(begin.size(), data - begin.size());
  const std::size_t size = sizeAfter(object.dictionary, "/Length ").value_or(0);
  text = from(text, data + kStream.size());
  expect(from(text, size).starts_with(kEnd), "stream " + std::to_string(number) + " has another length");
  object.stream = decoded(object.dictionary, text.substr(0, size), number);
  return object;
}

// An object stream begins with pairs of numbers: of an object, and where it is after them.
void PdfFileReader::readFromStream(int number, const Entry& entry) {
  const Object& holder = objects_[static_cast<int>(entry.place)];
  const std::string name = "object stream " + std::to_string(entry.place);
  const std::size_t first = sizeAfter(holder.dictionary, "/First ").value_or(0);
  if (!expect(holder.dictionary.find("/Type/ObjStm") != std::string::npos && first <= holder.stream.size(),
              name + " is none")) {
    return;
  }
  std::istringstream pairs(holder.stream.substr(0, first));
  std::vector<std::size_t> offsets;
  int own = 0;
  for (std::size_t offset = 0, object = 0; pairs >> object >> offset;) {
    if (offsets.size() == entry.index) {
      own = static_cast<int>(object);
    }
    offsets.push_back(offset);
  }
  expect(sizeAfter(holder.dictionary, "/N ") == offsets.size(), name + " has another number of objects");
  if (!expect(own == number && entry.index < offsets.size(), name + " has no object " + std::to_string(number))) {
    return;
  }
  const std::size_t end = entry.index + 1 < offsets.size() ? first + offsets[entry.index + 1] : holder.stream.size();
  const std::size_t begin = first + offsets[entry.index];
  if (expect(begin < end && end <= holder.stream.size() && holder.stream[end - 1] == '\n', name + " overlaps itself")) {
    objects_[number].dictionary = holder.stream.substr(begin, end - 1 - begin);
  }
}

std::string PdfFileReader::object(int number) const {
  const auto found = objects_.find(number);
  return found == objects_.end() ? std::string() : found->second.dictionary;
}

std::string PdfFileReader::stream(int number) const {
  const auto found = objects_.find(number);
  return found == objects_.end() ? std::string() : found->second.stream;
}

int PdfFileReader::holderOf(int number) const {
  const Entry& entry = entries_.at(static_cast<std::size_t>(number));
  return entry.kind == 2 ? static_cast<int>(entry.place) : 0;
}

}  // namespace scrivalen::test
