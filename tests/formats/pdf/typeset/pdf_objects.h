#pragma once

#include "support/pdf/pdf_file_reader.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::test {

/// The objects of a PDF file. Whatever is wrong with it fails the test.
struct PdfObjects : PdfFileReader {
  explicit PdfObjects(std::string file) : PdfFileReader(std::move(file)) {
    EXPECT_EQ(problems(), std::vector<std::string>());
  }
};

/// The integer after a key of a dictionary; -1 without it.
inline int numberAfter(std::string_view dictionary, std::string_view key) {
  const std::size_t found = dictionary.find(key);
  return found == dictionary.npos ? -1 : std::atoi(std::string(dictionary.substr(found + key.size())).c_str());
}

/// The numbers of the references in the brackets after a key.
inline std::vector<int> referencesAfter(std::string_view dictionary, std::string_view key) {
  std::vector<int> numbers;
  const std::size_t begin = dictionary.find(std::string(key) + "[");
  const std::size_t end = begin == dictionary.npos ? begin : dictionary.find(']', begin);
  const PdfValue list = end == dictionary.npos
                            ? PdfValue()
                            : pdfValueOf(dictionary.substr(begin + key.size(), end + 1 - begin - key.size()));
  for (const PdfValue& item : list.items) {
    EXPECT_NE(item.reference(), 0);
    numbers.push_back(item.reference());
  }
  return numbers;
}

}  // namespace scrivalen::test
