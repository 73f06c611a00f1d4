#include "formats/pdf/typeset/pictures/picture_matrix.h"
#include "formats/pdf/typeset/pictures/written_pictures.h"
#include "support/documents/pictures.h"
#include "support/documents/png_maker.h"
#include "support/faults/allocation_counter.h"

#include <new>

namespace scrivalen::typeset {
namespace {

using test::greyJpeg;
using test::greyPng;
using test::jpegSegment;
using test::makePng;
using test::PngPicture;
using test::pngWithRows;

constexpr std::size_t kMebibyte = std::size_t{1} << 20;

// A picture whose file is of about this size.
std::string jpegOfSize(std::size_t size, char name) {
  std::string segments;
  while (segments.size() < size) {
    segments += jpegSegment(0xFE, std::string(65'000, name));
  }
  return greyJpeg(8, 8, segments);
}

TEST(PictureWriter, WritesAnEqualPictureOnce) {
  WrittenPictures written;
  const auto logo = written.write(greyPng(8, 8));
  const auto other = written.write(greyPng(9, 8));
  const std::uint64_t size = written.size();
  EXPECT_EQ(written.write(greyPng(8, 8)), logo);
  EXPECT_EQ(written.write(greyPng(9, 8)), other);
  EXPECT_NE(logo, other);
  EXPECT_EQ(written.size(), size);
}

TEST(PictureWriter, KeepsThePicturesUsedLast) {
  WrittenPictures written;
  const auto a = written.write(jpegOfSize(6 * kMebibyte, 'a'));
  const auto b = written.write(jpegOfSize(6 * kMebibyte, 'b'));
  EXPECT_EQ(written.write(jpegOfSize(6 * kMebibyte, 'a')), a);
  const auto c = written.write(jpegOfSize(6 * kMebibyte, 'c'));
  EXPECT_EQ(written.write(jpegOfSize(6 * kMebibyte, 'a')), a);
  EXPECT_EQ(written.write(jpegOfSize(6 * kMebibyte, 'c')), c);
  EXPECT_NE(written.write(jpegOfSize(6 * kMebibyte, 'b')), b);
}

TEST(PictureWriter, DoesNotKeepAPictureOfMoreThan16Mebibytes) {
  WrittenPictures written;
  const auto logo = written.write(greyPng(8, 8));
  const auto large = written.write(jpegOfSize(17 * kMebibyte, 'a'));
  EXPECT_NE(written.write(jpegOfSize(17 * kMebibyte, 'a')), large);
  EXPECT_EQ(written.write(greyPng(8, 8)), logo);
}

TEST(PictureWriter, ReportsABrokenPictureEachTime) {
  WrittenPictures written;
  const PngPicture picture{.width = 5, .height = 5};
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(written.write(pngWithRows(picture, "too short")).has_value());
    EXPECT_EQ(written.reason(), "The picture is a PNG with broken pixels.");
    EXPECT_TRUE(written.write(greyPng(8, 8)).has_value());
  }
}

// MuPDF does not draw a page that has such a picture.
TEST(PictureWriter, RefusesAPictureWithALongerSideThanReadersDraw) {
  for (const bool isWide : {false, true}) {
    const auto pngOf = [isWide](std::uint32_t side) { return isWide ? greyPng(side, 1) : greyPng(1, side); };
    WrittenPictures written;
    EXPECT_TRUE(written.write(pngOf(65'535)).has_value());
    EXPECT_FALSE(written.write(pngOf(65'536)).has_value());
    EXPECT_EQ(written.reason(), "The picture has more than 65,535 pixels a side, which not all readers of PDF draw.");
  }
}

// Of a file whose rows never end no more is decompressed than the header says.
TEST(PictureWriter, StopsAtABomb) {
  for (const int colors : {0, 6}) {
    for (const bool isInterlaced : {false, true}) {
      PngPicture picture{.width = 100, .height = 100, .colors = colors};
      picture.isInterlaced = isInterlaced;
      const std::string png = pngWithRows(picture, std::string(4 * kMebibyte, '\0'));
      WrittenPictures written;
      const std::size_t before = test::allocatedBytes();
      EXPECT_FALSE(written.write(png).has_value());
      EXPECT_LT(test::allocatedBytes() - before, kMebibyte);
    }
  }
}

// Rows pass through; only the compressed result is collected.
TEST(PictureWriter, NeedsLittleMemoryForALargePicture) {
  for (const int colors : {0, 6}) {
    PngPicture picture{.width = 1000, .height = 10'000, .colors = colors};
    const std::size_t row = 1 + 1000 * static_cast<std::size_t>(picture.components());
    const std::string png = pngWithRows(picture, std::string(row * 10'000, '\0'));
    WrittenPictures written;
    const std::size_t before = test::allocatedBytes();
    EXPECT_TRUE(written.write(png).has_value());
    EXPECT_LT(test::allocatedBytes() - before, kMebibyte);
  }
}

TEST(PictureWriter, ThrowsWhenMemoryRunsOut) {
  for (const bool isInterlaced : {false, true}) {
    PngPicture picture{.width = 30, .height = 30, .colors = 6};
    picture.isInterlaced = isInterlaced;
    picture.samples.assign(30 * 30 * 4, 0x55);
    std::string reason;
    const auto read = document::Picture::read(makePng(picture), reason);
    bool hasFailed = true;
    std::size_t nth = 0;
    while (hasFailed) {
      WrittenPictures written;
      bool hasThrown = false;
      const test::FailingAllocations failing(++nth, test::FailingAllocations::Extent::One);
      try {
        written.write(*read);
      } catch (const std::bad_alloc&) {
        hasThrown = true;
      }
      hasFailed = failing.hasFailed();
      EXPECT_EQ(hasThrown, hasFailed) << nth;
    }
    EXPECT_GT(nth, 10u);
  }
}

// Where a corner of the unit square is drawn.
struct Point {
  Length x, y;
  bool operator==(const Point&) const = default;
};

Point drawn(const PictureMatrix& m, Length x, Length y) {
  return {m[0] * x + m[2] * y + m[4], m[1] * x + m[3] * y + m[5]};
}

TEST(PictureMatrix, PutsTheFirstRowAndColumnWhereExifSays) {
  const Point topLeft{10, 120}, topRight{40, 120}, bottomLeft{10, 20}, bottomRight{40, 20};
  // Where the upper left, upper right and lower left corner of the stored image are shown.
  const Point corners[8][3] = {
      {topLeft, topRight, bottomLeft},     {topRight, topLeft, bottomRight},   {bottomRight, bottomLeft, topRight},
      {bottomLeft, bottomRight, topLeft},  {topLeft, bottomLeft, topRight},    {topRight, bottomRight, topLeft},
      {bottomRight, topRight, bottomLeft}, {bottomLeft, topLeft, bottomRight},
  };
  for (int orientation = 1; orientation <= 8; ++orientation) {
    const PictureMatrix matrix = pictureMatrix(orientation, 10, 20, 30, 100);
    const Point* expected = corners[orientation - 1];
    EXPECT_EQ(drawn(matrix, 0, 1), expected[0]) << orientation;
    EXPECT_EQ(drawn(matrix, 1, 1), expected[1]) << orientation;
    EXPECT_EQ(drawn(matrix, 0, 0), expected[2]) << orientation;
  }
}

}  // namespace
}  // namespace scrivalen::typeset
