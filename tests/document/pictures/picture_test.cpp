#include "document/pictures/picture.h"

#include "document/model/event_log.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

namespace scrivalen::document {
namespace {

using test::bigEndian;
using test::greyJpeg;
using test::greyPng;
using test::jpegSegment;
using test::pngChunk;
using test::withChecksums;

std::shared_ptr<const Picture> read(std::string_view bytes) {
  std::string reason;
  auto picture = Picture::read(bytes, reason);
  EXPECT_NE(picture, nullptr) << reason;
  return picture;
}

std::string reasonFor(std::string_view bytes) {
  std::string reason;
  EXPECT_EQ(Picture::read(bytes, reason), nullptr);
  return reason;
}

std::string with(std::string bytes, std::size_t at, char byte) {
  bytes.at(at) = byte;
  return bytes;
}

std::string jfif(char unit, std::uint32_t x, std::uint32_t y) {
  return jpegSegment(0xE0,
                     std::string("JFIF\0\1\2", 7) + unit + bigEndian(x, 2) + bigEndian(y, 2) + std::string(2, '\0'));
}

// EXIF, least significant byte first: an entry each for the orientation, the two resolutions and their unit.
std::string exif(int orientation, int x, int y, int unit) {
  const auto byte = [](int value) { return std::string(1, static_cast<char>(value)); };
  const auto three = std::string(3, '\0');
  const auto entry = [&](int tag, int type, int value) {
    return byte(tag) + "\1" + byte(type) + '\0' + byte(1) + three + byte(value) + three;
  };
  const std::string tiff = std::string("II*\0\x08\0\0\0\x04\0", 10) + entry(0x12, 3, orientation) + entry(0x1A, 5, 62) +
                           entry(0x1B, 5, 70) + entry(0x28, 3, unit) + std::string(4, '\0') + byte(x) + three +
                           byte(2) + three + byte(y) + three + byte(2) + three;
  return jpegSegment(0xE1, std::string("Exif\0\0", 6) + tiff);
}

TEST(Pictures, MayBePng) {
  const std::string bytes = greyPng(300, 20);
  const auto picture = read(bytes);
  EXPECT_EQ(picture->format(), Picture::Format::Png);
  EXPECT_EQ(picture->mediaType(), "image/png");
  EXPECT_EQ(picture->bytes(), bytes);
  EXPECT_EQ(picture->width(), 300u);
  EXPECT_EQ(picture->height(), 20u);
  EXPECT_EQ(picture->widthPt(), 225);
  EXPECT_EQ(picture->heightPt(), 15);
  EXPECT_EQ(picture->orientation(), 1);
}

TEST(Pictures, MayBeJpeg) {
  const std::string bytes = greyJpeg(300, 20);
  const auto picture = read(bytes);
  EXPECT_EQ(picture->format(), Picture::Format::Jpeg);
  EXPECT_EQ(picture->mediaType(), "image/jpeg");
  EXPECT_EQ(picture->bytes(), bytes);
  EXPECT_EQ(picture->width(), 300u);
  EXPECT_EQ(picture->height(), 20u);
  EXPECT_EQ(picture->widthPt(), 225);
  EXPECT_EQ(picture->heightPt(), 15);
}

TEST(Pictures, HaveTheResolutionThatAPngStates) {
  const auto picture = read(greyPng(100, 100, pngChunk("pHYs", bigEndian(10000, 4) + bigEndian(5000, 4) + '\1')));
  EXPECT_NEAR(picture->widthPt(), 28.346, 0.001);  // 100 pixels at 10,000 a metre: 1 cm
  EXPECT_NEAR(picture->heightPt(), 56.693, 0.001);
}

TEST(Pictures, HaveAUsualResolutionWhereAPngStatesOnlyAProportion) {
  EXPECT_EQ(read(greyPng(100, 100, pngChunk("pHYs", bigEndian(2, 4) + bigEndian(1, 4) + '\0')))->widthPt(), 75);
  EXPECT_EQ(read(greyPng(100, 100, pngChunk("pHYs", "")))->widthPt(), 75);
}

TEST(Pictures, HaveAUsualResolutionWhereThatStatedIsAbsurd) {
  EXPECT_EQ(read(greyPng(100, 100, pngChunk("pHYs", bigEndian(1, 4) + bigEndian(1, 4) + '\1')))->widthPt(), 75);
  EXPECT_EQ(read(greyPng(100, 100, pngChunk("pHYs", bigEndian(0, 4) + bigEndian(0, 4) + '\1')))->widthPt(), 75);
  EXPECT_EQ(read(greyPng(100, 100, pngChunk("pHYs", std::string(8, '\xFF') + '\1')))->widthPt(), 75);
}

TEST(Pictures, HaveTheResolutionThatAJpegStates) {
  EXPECT_EQ(read(greyJpeg(100, 100, jfif('\1', 72, 144)))->widthPt(), 100);
  EXPECT_EQ(read(greyJpeg(100, 100, jfif('\1', 72, 144)))->heightPt(), 50);
  EXPECT_NEAR(read(greyJpeg(100, 100, jfif('\2', 100, 50)))->widthPt(), 28.346, 0.001);
  EXPECT_EQ(read(greyJpeg(100, 100, jfif('\0', 1, 1)))->widthPt(), 75);
}

TEST(Pictures, HaveTheResolutionOfExifWhereJfifStatesNone) {
  EXPECT_EQ(read(greyJpeg(100, 100, exif(1, 100, 50, 2)))->widthPt(), 144);  // 100 / 2 pixels an inch
  EXPECT_EQ(read(greyJpeg(100, 100, exif(1, 100, 50, 2)))->heightPt(), 288);
  EXPECT_NEAR(read(greyJpeg(100, 100, exif(1, 100, 50, 3)))->widthPt(), 56.693, 0.001);
  EXPECT_EQ(read(greyJpeg(100, 100, jfif('\0', 1, 1) + exif(1, 100, 50, 2)))->widthPt(), 144);
  EXPECT_EQ(read(greyJpeg(100, 100, jfif('\1', 72, 72) + exif(1, 100, 50, 2)))->widthPt(), 100);
}

TEST(Pictures, AreTurnedAsExifSays) {
  for (int orientation = 1; orientation <= 8; ++orientation) {
    const auto picture = read(greyJpeg(300, 20, exif(orientation, 0, 0, 2)));
    EXPECT_EQ(picture->orientation(), orientation);
    EXPECT_EQ(picture->width(), 300u);
    EXPECT_EQ(picture->widthPt(), orientation < 5 ? 225 : 15);
    EXPECT_EQ(picture->heightPt(), orientation < 5 ? 15 : 225);
  }
  EXPECT_EQ(read(greyJpeg(300, 20, exif(9, 0, 0, 2)))->orientation(), 1);
}

TEST(Pictures, MayHaveExifWithTheMostSignificantByteFirst) {
  const std::string tiff = std::string("MM\0*\0\0\0\x08\0\1\1\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0", 26);
  EXPECT_EQ(read(greyJpeg(8, 8, jpegSegment(0xE1, std::string("Exif\0\0", 6) + tiff)))->orientation(), 6);
}

TEST(Pictures, MayHaveFillBytesAndSegmentsThatNobodyKnows) {
  const std::string segments = "\xFF\xFF\xFF\x01" + jpegSegment(0xFE, "a comment") + jpegSegment(0xEF, "");
  EXPECT_EQ(read(greyJpeg(8, 16, segments))->height(), 16u);
  EXPECT_EQ(read(greyPng(8, 16, pngChunk("tEXt", "a comment")))->height(), 16u);
  EXPECT_EQ(read(greyPng(8, 16) + "more")->height(), 16u);
}

TEST(Pictures, OfOtherFormatsAreRefused) {
  for (const std::string_view bytes : {"", "GIF89a", "<svg/>", "\x89PNG\r\n\x1A", "\xFF\xD8", "BM"}) {
    EXPECT_EQ(reasonFor(bytes), "The picture is neither PNG nor JPEG.");
  }
}

// A PNG that states a size, whatever pixels it has.
std::string pngOfSize(std::uint32_t width, std::uint32_t height, std::size_t bytes) {
  const std::string header = bigEndian(width, 4) + bigEndian(height, 4) + std::string("\x08\0\0\0\0", 5);
  return "\x89PNG\r\n\x1A\n" + pngChunk("IHDR", header) + pngChunk("IDAT", std::string(bytes, 'x')) +
         pngChunk("IEND", "");
}

TEST(Pictures, HaveAtMost64Megapixels) {
  const auto sized = [](std::uint32_t width, std::uint32_t height) { return pngOfSize(width, height, 64'000); };
  EXPECT_EQ(read(sized(8000, 8000))->width(), 8000u);
  EXPECT_EQ(reasonFor(sized(8000, 8001)), "The picture has more than 64 megapixels.");
  EXPECT_EQ(reasonFor(sized(0xFFFFFFFF, 0xFFFFFFFF)), "The picture has more than 64 megapixels.");
  EXPECT_EQ(reasonFor(sized(0, 5)), "The picture has no pixels.");
  EXPECT_EQ(reasonFor(sized(5, 0)), "The picture has no pixels.");
}

// A byte of zlib becomes 1,032 bytes at most.
TEST(Pictures, ThatArePngHaveNoMorePixelsThanTheirBytesMayHold) {
  EXPECT_EQ(read(pngOfSize(1032, 101, 100))->width(), 1032u);
  EXPECT_EQ(reasonFor(pngOfSize(1032, 102, 100)), "The picture has fewer pixels than it states.");
  EXPECT_EQ(reasonFor(pngOfSize(8000, 8000, 1000)), "The picture has fewer pixels than it states.");
}

TEST(Pictures, ThatArePngNeedTheChecksumsOfTheirHeaderAndPalette) {
  const std::string png = greyPng(8, 8, pngChunk("PLTE", "abc") + pngChunk("tEXt", "a comment"));
  for (const std::string_view chunk : {"IHDR", "PLTE"}) {
    const std::size_t content = png.find(chunk) + 4;
    EXPECT_EQ(reasonFor(with(png, content + 1, static_cast<char>(png[content + 1] ^ 1))),
              "The picture is a PNG with a wrong checksum.");
  }
  EXPECT_EQ(read(with(png, png.find("comment"), 'C'))->width(), 8u);
}

// Where the pixels are whole all the same, readers show them.
TEST(Pictures, ThatArePngNeedPixelsThatAreNotDamaged) {
  const std::string png = greyPng(8, 8);
  const std::size_t begin = png.find("IDAT") + 4;
  const std::size_t end = png.find("IEND") - 8;
  for (std::size_t at = begin; at < end; ++at) {
    EXPECT_EQ(reasonFor(with(png, at, static_cast<char>(png[at] ^ 4))), "The picture is a PNG with broken pixels.")
        << at - begin;
  }
  EXPECT_EQ(read(with(png, end, static_cast<char>(png[end] ^ 1)))->width(), 8u);
}

TEST(Pictures, ThatArePngHaveNoCriticalChunksThatNobodyKnows) {
  EXPECT_EQ(reasonFor(greyPng(8, 8, pngChunk("CgBI", "1234"))),
            "The picture is a kind of PNG that most programs do not show.");
}

TEST(Pictures, ThatArePngNeedAValidHeader) {
  const std::string png = greyPng(1, 1);
  const std::string reason = "The picture is a PNG without a valid header.";
  constexpr std::size_t kDepth = 24;
  EXPECT_EQ(reasonFor(with(png, 11, '\x0C')), reason);
  EXPECT_EQ(reasonFor(with(png, 12, 'J')), reason);
  EXPECT_EQ(reasonFor(with(png, kDepth, '\3')), reason);
  EXPECT_EQ(reasonFor(with(png, kDepth, '\x20')), reason);
  for (const char colors : {'\1', '\5', '\7', '\xFF'}) {
    EXPECT_EQ(reasonFor(with(png, kDepth + 1, colors)), reason);
  }
  EXPECT_EQ(reasonFor(with(with(png, kDepth, '\x10'), kDepth + 1, '\3')), reason);
  EXPECT_EQ(reasonFor(with(png, kDepth + 2, '\1')), reason);
  EXPECT_EQ(reasonFor(with(png, kDepth + 3, '\1')), reason);
  EXPECT_EQ(reasonFor(with(png, kDepth + 4, '\2')), reason);
}

TEST(Pictures, ThatArePngNeedTheirPixelsAndPalette) {
  const std::string png = greyPng(1, 1);
  const std::size_t pixels = png.find("IDAT") - 4;
  const std::size_t end = png.find("IEND") - 4;
  EXPECT_EQ(reasonFor(std::string(png).erase(pixels, end - pixels)), "The picture is a PNG without pixels.");
  EXPECT_EQ(reasonFor(with(png, 25, '\3')), "The picture is a PNG without its palette.");
  const std::string paletted = greyPng(1, 1, pngChunk("PLTE", "abc"));
  EXPECT_EQ(read(withChecksums(with(paletted, 25, '\3')))->width(), 1u);
}

TEST(Pictures, ThatAreJpegNeedAFrameThatProgramsShow) {
  const std::string jpeg = greyJpeg(8, 8);
  const std::size_t frame = jpeg.find("\xFF\xC0");
  const std::string rare = "The picture is a kind of JPEG that most programs do not show.";
  EXPECT_EQ(read(with(jpeg, frame + 1, '\xC1'))->width(), 8u);
  EXPECT_EQ(read(with(jpeg, frame + 1, '\xC2'))->width(), 8u);
  for (const char marker : {'\xC3', '\xC5', '\xC9', '\xCF'}) {
    EXPECT_EQ(reasonFor(with(jpeg, frame + 1, marker)), rare);
  }
  EXPECT_EQ(reasonFor(with(jpeg, frame + 4, '\x0C')), rare);
  EXPECT_EQ(reasonFor(with(jpeg, frame + 9, '\0')), rare);
  EXPECT_EQ(reasonFor(with(jpeg, frame + 9, '\3')), "The picture is a JPEG with a broken frame.");
  EXPECT_EQ(reasonFor(std::string(jpeg).erase(frame, 13)), "The picture is a JPEG without a frame.");
  EXPECT_EQ(reasonFor(std::string(jpeg).insert(frame, jpeg.substr(frame, 13))),
            "The picture is a JPEG with two frames.");
  EXPECT_EQ(reasonFor(greyJpeg(8, 0)), "The picture has no pixels.");
  EXPECT_EQ(reasonFor(greyJpeg(8, 8, "x")), "The picture is neither PNG nor JPEG.");
  EXPECT_EQ(reasonFor(greyJpeg(8, 8, jpegSegment(0xFE, "") + "x")),
            "The picture is a JPEG with bytes between its segments.");
}

TEST(Pictures, ThatEndEarlyAreRefused) {
  for (const std::string& bytes : {greyPng(8, 8), greyJpeg(8, 8, jfif('\1', 72, 72) + exif(6, 100, 50, 2))}) {
    for (std::size_t size = 0; size < bytes.size(); ++size) {
      EXPECT_NE(reasonFor(bytes.substr(0, size)), "") << size;
    }
    read(bytes);
  }
}

// A block of 8 x 8 pixels takes a bit at least.
TEST(Pictures, ThatAreJpegHaveNoMorePixelsThanTheirBytesMayHold) {
  const auto sized = [](std::uint32_t width, std::uint32_t height) {
    std::string jpeg = greyJpeg(64, 64);
    return jpeg.replace(jpeg.find("\xFF\xC0") + 5, 4, bigEndian(height, 2) + bigEndian(width, 2));
  };
  EXPECT_EQ(read(sized(64, 64))->width(), 64u);
  EXPECT_EQ(reasonFor(sized(8000, 8000)), "The picture has fewer pixels than it states.");
  EXPECT_EQ(reasonFor(sized(65'535, 8)), "The picture has fewer pixels than it states.");
  EXPECT_EQ(reasonFor(sized(8, 65'535)), "The picture has fewer pixels than it states.");
}

TEST(Pictures, ThatAreJpegMayHaveFewBytesForManyPixels) {
  for (const std::uint32_t side : {1u, 9u, 1000u, 7999u}) {
    EXPECT_EQ(read(greyJpeg(side, side))->width(), side);
  }
}

TEST(Pictures, ThatAreBrokenAnywhereAreReadOrRefused) {
  int readable = 0;
  for (const std::string& bytes : {greyPng(8, 8, pngChunk("pHYs", std::string(9, '\1'))),
                                   greyJpeg(8, 8, jfif('\1', 72, 72) + exif(6, 100, 50, 2))}) {
    for (std::size_t at = 0; at < bytes.size(); ++at) {
      for (const int byte : {0x00, 0x01, 0x7F, 0x80, 0xD9, 0xFE, 0xFF}) {
        std::string reason;
        const auto picture = Picture::read(withChecksums(with(bytes, at, static_cast<char>(byte))), reason);
        EXPECT_EQ(picture == nullptr, !reason.empty());
        if (picture != nullptr) {
          ++readable;
          EXPECT_LE(std::uint64_t{picture->width()} * picture->height(), 64'000'000u);
          EXPECT_GT(picture->widthPt(), 0);
          EXPECT_GT(picture->heightPt(), 0);
        }
      }
    }
  }
  EXPECT_GT(readable, 0);
}

// Remembers the width of the last picture.
class LastPicture : public EventSink {
 public:
  void write(const Event& event) override { width = event.picture->width(); }
  std::uint32_t width = 0;
};

TEST(EventLog, KeepsThePicturesOfItsEvents) {
  EventLog log;
  log.write({.kind = EventKind::Image, .picture = read(greyPng(3, 4)).get()});
  log.write({.kind = EventKind::Image, .picture = read(greyPng(5, 6)).get()});
  LastPicture last;
  log.replay(last);
  EXPECT_EQ(last.width, 5u);
}

}  // namespace
}  // namespace scrivalen::document
