#include "formats/pdf/typeset/pdf_objects.h"

#include "support/inflated.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <utility>

namespace scrivalen::test {
namespace {

constexpr std::size_t kColumns = 7;  // bytes of an entry: kind, place of five bytes, index

// What begins at an offset; empty past the end.
std::string_view from(std::string_view text, std::size_t offset) {
  return offset <= text.size() ? text.substr(offset) : std::string_view();
}

std::string decoded(const std::string& dictionary, std::string_view data) {
  return dictionary.find("/Filter/FlateDecode") == dictionary.npos ? std::string(data) : inflated(data);
}

std::size_t bigEndian(std::string_view bytes) {
  std::size_t value = 0;
  for (const char c : bytes) {
    value = value << 8 | static_cast<unsigned char>(c);
  }
  return value;
}

// Undoes the PNG filter Up: each byte is its difference from the one above it.
std::string unfiltered(const std::string& rows) {
  EXPECT_EQ(rows.size() % (kColumns + 1), 0u);
  std::string table;
  std::string above(kColumns, '\0');
  for (std::size_t at = 0; at + kColumns < rows.size(); at += kColumns + 1) {
    EXPECT_EQ(rows[at], 2);
    for (std::size_t i = 0; i < kColumns; ++i) {
      above[i] = static_cast<char>(static_cast<unsigned char>(above[i]) + static_cast<unsigned char>(rows[at + 1 + i]));
    }
    table += above;
  }
  return table;
}

}  // namespace

int numberAfter(std::string_view dictionary, std::string_view key) {
  const std::size_t found = dictionary.find(key);
  return found == dictionary.npos ? -1 : std::atoi(std::string(from(dictionary, found + key.size())).c_str());
}

std::vector<int> referencesAfter(std::string_view dictionary, std::string_view key) {
  std::vector<int> numbers;
  const std::size_t begin = dictionary.find(std::string(key) + "[");
  if (begin != dictionary.npos) {
    const std::string_view list = from(dictionary, begin + key.size() + 1);
    std::istringstream words{std::string(list.substr(0, list.find(']')))};
    int number = 0;
    int generation = 0;
    for (std::string letter; words >> number >> generation >> letter;) {
      EXPECT_EQ(generation, 0);
      EXPECT_EQ(letter, "R");
      numbers.push_back(number);
    }
  }
  return numbers;
}

PdfObjects::PdfObjects(std::string file) : file_(std::move(file)) { read(); }

void PdfObjects::read() {
  const std::string_view file = file_;
  EXPECT_EQ(file.substr(0, 9), "%PDF-1.7\n");
  constexpr std::string_view kStart = "startxref\n";
  constexpr std::string_view kEnd = "\n%%EOF\n";
  const std::size_t start = file.rfind(kStart);
  ASSERT_NE(start, file.npos);
  ASSERT_GT(file.size(), kEnd.size());
  EXPECT_EQ(file.substr(file.size() - kEnd.size()), kEnd);
  const auto offset = static_cast<std::size_t>(std::atoll(std::string(file.substr(start + kStart.size())).c_str()));
  const int number = std::atoi(std::string(from(file, offset)).c_str());
  const Object table = readAt(offset, number);
  trailer_ = table.dictionary;
  EXPECT_NE(trailer_.find("/Type/XRef"), trailer_.npos);
  EXPECT_NE(trailer_.find("/W[1 5 1]/DecodeParms<</Predictor 12/Columns 7>>"), trailer_.npos);
  readEntries(unfiltered(table.stream));
  EXPECT_EQ(numberAfter(trailer_, "/Size "), static_cast<int>(entries_.size()));
}

void PdfObjects::readEntries(const std::string& table) {
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

PdfObjects::Object PdfObjects::readAt(std::size_t offset, int number) const {
  const std::string begin = std::to_string(number) + " 0 obj\n";
  std::string_view text = from(file_, offset);
  EXPECT_EQ(text.substr(0, begin.size()), begin) << "at " << offset;
  text = from(text, begin.size());
  constexpr std::string_view kStream = "stream\n";
  constexpr std::string_view kEnd = "\nendstream\nendobj\n";
  const std::size_t data = text.find(kStream);
  if (data == text.npos) {
    ADD_FAILURE() << "object " << number << " has no stream";
    return {};
  }
  Object object;
  object.dictionary = text.substr(0, data);
  const auto size = static_cast<std::size_t>(numberAfter(object.dictionary, "/Length "));
  text = from(text, data + kStream.size());
  EXPECT_EQ(from(text, size).substr(0, kEnd.size()), kEnd) << "of object " << number;
  object.stream = decoded(object.dictionary, text.substr(0, size));
  return object;
}

// An object stream begins with pairs of numbers: of an object, and where it is after them.
void PdfObjects::readFromStream(int number, const Entry& entry) {
  const Object& holder = objects_[static_cast<int>(entry.place)];
  EXPECT_NE(holder.dictionary.find("/Type/ObjStm"), holder.dictionary.npos);
  const int count = numberAfter(holder.dictionary, "/N ");
  const auto first = static_cast<std::size_t>(numberAfter(holder.dictionary, "/First "));
  std::istringstream pairs(holder.stream.substr(0, first));
  std::vector<std::size_t> offsets;
  int own = 0;
  for (std::size_t offset = 0, name = 0; pairs >> name >> offset;) {
    if (offsets.size() == entry.index) {
      own = static_cast<int>(name);
    }
    offsets.push_back(offset);
  }
  EXPECT_EQ(own, number);
  EXPECT_EQ(static_cast<int>(offsets.size()), count);
  ASSERT_LT(entry.index, offsets.size());
  const std::size_t end = entry.index + 1 < offsets.size() ? first + offsets[entry.index + 1] : holder.stream.size();
  const std::size_t begin = first + offsets[entry.index];
  ASSERT_LT(begin, end);
  EXPECT_EQ(holder.stream[end - 1], '\n');
  objects_[number].dictionary = holder.stream.substr(begin, end - 1 - begin);
}

std::string PdfObjects::object(int number) const {
  const auto found = objects_.find(number);
  return found == objects_.end() ? std::string() : found->second.dictionary;
}

std::string PdfObjects::stream(int number) const {
  const auto found = objects_.find(number);
  return found == objects_.end() ? std::string() : found->second.stream;
}

int PdfObjects::holderOf(int number) const {
  const Entry& entry = entries_.at(static_cast<std::size_t>(number));
  return entry.kind == 2 ? static_cast<int>(entry.place) : 0;
}

}  // namespace scrivalen::test
