#include "formats/pdf/typeset/file/cross_references.h"
#include "support/inflated.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen::test {
namespace {

using typeset::CrossReferences;

struct Sink : ByteSink {
  bool take(const char* data, std::size_t size) override {
    bytes.append(data, size);
    return true;
  }
  std::string bytes;
};

std::string streamOf(CrossReferences& references) {
  references.finish(0);
  Sink sink;
  OutputBuffer out(sink);
  references.writeStream(out);
  out.flush();
  EXPECT_EQ(sink.bytes.size(), references.streamSize());
  return sink.bytes;
}

// The rows as numbers of seven bytes.
std::vector<std::uint64_t> rowsOf(CrossReferences& references) {
  const std::string text = inflated(streamOf(references));
  EXPECT_EQ(text.size(), static_cast<std::size_t>(references.count()) * 8);
  std::vector<std::uint64_t> rows;
  unsigned char above[7] = {};
  for (std::size_t at = 0; at + 8 <= text.size(); at += 8) {
    EXPECT_EQ(text[at], 2);  // the filter Up
    std::uint64_t row = 0;
    for (std::size_t i = 0; i < 7; ++i) {
      above[i] = static_cast<unsigned char>(above[i] + static_cast<unsigned char>(text[at + 1 + i]));
      row = row << 8 | above[i];
    }
    rows.push_back(row);
  }
  return rows;
}

TEST(PdfCrossReferences, HaveARowForEachObject) {
  CrossReferences references(CrossReferences::Form::Stream);
  EXPECT_EQ(references.newNumber(), 1);
  EXPECT_EQ(references.newNumber(), 2);
  EXPECT_EQ(references.newNumber(), 3);
  references.setInStream(3, 0x123456, 0xFF);
  references.setOffset(1, 0x987654321F);
  EXPECT_EQ(rowsOf(references), (std::vector<std::uint64_t>{0, 0x01987654321F00, 0, 0x020000123456FF}));
}

TEST(PdfCrossReferences, ComeInAnyOrder) {
  constexpr int kObjects = 20'000;
  CrossReferences references(CrossReferences::Form::Stream);
  std::vector<std::uint64_t> rows(kObjects + 1);
  const auto set = [&](int number) {
    const auto offset = static_cast<std::uint64_t>(number) * 7919;
    references.setOffset(number, offset);
    rows[static_cast<std::size_t>(number)] = std::uint64_t{1} << 48 | offset << 8;
  };
  for (int number = 1; number <= kObjects; ++number) {
    references.newNumber();
    // The ends of blocks, a whole block, and some others are set later.
    if (number % 4096 != 4095 && number / 4096 != 2 && number % 1000 != 0) {
      set(number);
    }
  }
  for (int number = kObjects; number > 0; --number) {
    if (rows[static_cast<std::size_t>(number)] == 0 && number != 7000) {
      set(number);
    }
  }
  EXPECT_EQ(rowsOf(references), rows);
}

TEST(PdfCrossReferences, AreATableInOlderFiles) {
  CrossReferences references(CrossReferences::Form::Table);
  references.newNumber();
  references.newNumber();
  references.setOffset(2, 123456);
  references.finish(0);
  Sink sink;
  OutputBuffer out(sink);
  references.writeTable(out);
  out.flush();
  EXPECT_EQ(sink.bytes, "0000000000 65535 f \n0000000000 65535 f \n0000123456 00000 n \n");
}

TEST(PdfCrossReferences, HaveAHashOfAllPlaces) {
  for (const auto form : {CrossReferences::Form::Stream, CrossReferences::Form::Table}) {
    const auto hashOf = [form](std::uint64_t first, std::uint64_t last, std::uint64_t begin) {
      CrossReferences references(form);
      for (int number = 1; number <= 5000; ++number) {
        references.newNumber();
        references.setOffset(number, number == 1 ? first : number == 5000 ? last : 100);
      }
      return references.finish(begin);
    };
    EXPECT_EQ(hashOf(1, 2, 3), hashOf(1, 2, 3));
    EXPECT_NE(hashOf(1, 2, 3), hashOf(9, 2, 3));
    EXPECT_NE(hashOf(1, 2, 3), hashOf(1, 9, 3));
    EXPECT_NE(hashOf(1, 2, 3), hashOf(1, 2, 9));
  }
}

}  // namespace
}  // namespace scrivalen::test
