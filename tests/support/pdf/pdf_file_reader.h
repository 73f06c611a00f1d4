#pragma once

#include "support/pdf/pdf_value.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// The objects of a PDF file with cross-reference and object streams, as a reader finds them: by the file's last lines.
/// Any bytes may be given.
class PdfFileReader {
 public:
  explicit PdfFileReader(std::string file);

  /// What is wrong with the file, also with references that were looked up.
  const std::vector<std::string>& problems() const { return problems_; }
  /// The dictionary of the cross-reference stream.
  const std::string& trailer() const { return trailer_; }
  /// The number of entries in the cross-reference stream; the first of them is no object.
  std::size_t size() const { return entries_.size(); }
  bool has(int number) const { return objects_.count(number) != 0; }
  /// An object without a stream, or the dictionary of one with a stream. Empty for a missing object.
  std::string object(int number) const;
  /// The data of a stream, decompressed.
  std::string stream(int number) const;
  /// The number of the object stream that has an object; 0 for an object of its own.
  int holderOf(int number) const;

 private:
  struct Entry {
    int kind = 0;           // 0 free, 1 at an offset, 2 in an object stream
    std::size_t place = 0;  // the offset, or the number of the object stream
    std::size_t index = 0;  // in that stream
  };
  struct Object {
    std::string dictionary;
    std::string stream;
  };

  void read();
  Object readAt(std::size_t offset, int number);
  std::string decoded(const std::string& dictionary, std::string_view data, int number);
  std::string unfiltered(const std::string& rows);
  void readEntries(const std::string& table);
  void readFromStream(int number, const Entry& entry);
  bool expect(bool good, const std::string& problem);

  std::string file_;
  std::string trailer_;
  std::vector<Entry> entries_;
  std::map<int, Object> objects_;
  std::vector<std::string> problems_;
};

}  // namespace scrivalen::test
