#include "formats/pdf/typeset/pictures/written_pictures.h"
#include "support/documents/pictures.h"
#include "support/documents/png_maker.h"

#include <algorithm>
#include <random>

namespace scrivalen::typeset {
namespace {

using test::deflated;
using test::filteredRows;
using test::makePng;
using test::PdfImage;
using test::pngChunk;
using test::PngPicture;
using test::pngWithRows;

enum Colors { kGray = 0, kRgb = 2, kPalette = 3, kGrayAlpha = 4, kRgbAlpha = 6 };

struct Kind {
  int colors;
  int depth;
};

constexpr Kind kKinds[] = {{kGray, 1},    {kGray, 2},      {kGray, 4},       {kGray, 8},     {kGray, 16},
                           {kRgb, 8},     {kRgb, 16},      {kPalette, 1},    {kPalette, 2},  {kPalette, 4},
                           {kPalette, 8}, {kGrayAlpha, 8}, {kGrayAlpha, 16}, {kRgbAlpha, 8}, {kRgbAlpha, 16}};

PngPicture pictureOf(const Kind& kind, std::uint32_t width, std::uint32_t height, bool isInterlaced = false) {
  PngPicture picture{.width = width, .height = height, .colors = kind.colors, .depth = kind.depth};
  picture.isInterlaced = isInterlaced;
  std::mt19937 random(width);
  const std::size_t count = std::size_t{width} * height * static_cast<std::size_t>(picture.components());
  for (std::size_t i = 0; i < count; ++i) {
    picture.samples.push_back(static_cast<unsigned>(random()) & ((1u << kind.depth) - 1));
  }
  if (kind.colors == kPalette) {
    for (int i = 0; i < 3 << kind.depth; ++i) {
      picture.palette += static_cast<char>(random() & 0xFF);
    }
  }
  return picture;
}

bool hasAlpha(const PngPicture& picture) { return picture.colors == kGrayAlpha || picture.colors == kRgbAlpha; }

// Every component but the last, or only the last.
std::vector<unsigned> partOf(const PngPicture& picture, bool alpha) {
  const auto components = static_cast<std::size_t>(picture.components());
  std::vector<unsigned> part;
  for (std::size_t i = 0; i < picture.samples.size(); ++i) {
    if ((i % components == components - 1) == alpha) {
      part.push_back(picture.samples[i]);
    }
  }
  return part;
}

bool has(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

struct Images {
  PdfImage colors;
  std::optional<PdfImage> mask;
};

// The images of a picture. Their texts are not valid any more.
std::optional<Images> imagesOf(std::string_view png) {
  WrittenPictures written;
  const auto number = written.write(png);
  const auto colors = number ? written.image(*number) : std::nullopt;
  if (!colors) {
    return std::nullopt;
  }
  return Images{*colors, colors->mask == 0 ? std::nullopt : written.image(colors->mask)};
}

std::string entriesOf(std::string_view png) {
  WrittenPictures written;
  return std::string(written.image(written.write(png).value()).value().entries);
}

std::string reasonFor(std::string_view png) {
  WrittenPictures written;
  const std::uint64_t size = written.size();
  EXPECT_FALSE(written.write(png).has_value());
  EXPECT_EQ(written.size(), size);
  return written.reason();
}

constexpr char kBroken[] = "The picture is a PNG with broken pixels.";

TEST(PngInPdf, HasThePixelsOfEachKind) {
  for (const Kind& kind : kKinds) {
    for (const bool isInterlaced : {false, true}) {
      for (std::uint32_t width = 1; width <= 19; ++width) {
        SCOPED_TRACE(testing::Message() << kind.colors << " " << kind.depth << " " << isInterlaced << " " << width);
        const PngPicture picture = pictureOf(kind, width, (width * 5) % 11 + 1, isInterlaced);
        const auto images = imagesOf(makePng(picture));
        ASSERT_TRUE(images.has_value());
        EXPECT_EQ(images->colors.width, picture.width);
        EXPECT_EQ(images->colors.height, picture.height);
        EXPECT_EQ(images->colors.depth, picture.depth);
        EXPECT_EQ(images->colors.samples, hasAlpha(picture) ? partOf(picture, false) : picture.samples);
        ASSERT_EQ(images->mask.has_value(), hasAlpha(picture));
        EXPECT_TRUE(!images->mask || images->mask->samples == partOf(picture, true));
      }
    }
  }
}

// What a sample is on white, in 8 bits.
unsigned onWhite(unsigned sample, unsigned alpha, int depth) {
  const unsigned shift = depth == 16 ? 8 : 0;
  return ((sample >> shift) * (alpha >> shift) + 255 * (255 - (alpha >> shift)) + 127) / 255;
}

TEST(PngInPdf, IsDrawnOnWhiteInAnArchiveWithoutTransparency) {
  for (const Kind& kind :
       {Kind{kGray, 16}, {kRgb, 16}, {kGrayAlpha, 8}, {kGrayAlpha, 16}, {kRgbAlpha, 8}, {kRgbAlpha, 16}}) {
    for (const bool isInterlaced : {false, true}) {
      SCOPED_TRACE(testing::Message() << kind.colors << " " << kind.depth << " " << isInterlaced);
      const PngPicture picture = pictureOf(kind, 13, 9, isInterlaced);
      WrittenPictures written(Standard::A1b);
      const auto image = written.image(written.write(makePng(picture)).value()).value();
      EXPECT_EQ(image.depth, 8);
      EXPECT_EQ(image.mask, 0);
      const auto components = static_cast<std::size_t>(picture.components());
      const std::size_t colors = components - (hasAlpha(picture) ? 1 : 0);
      ASSERT_EQ(image.samples.size(), 13 * 9 * colors);
      for (std::size_t i = 0; i < image.samples.size(); ++i) {
        const std::size_t pixel = i / colors * components;
        const unsigned alpha = hasAlpha(picture) ? picture.samples[pixel + colors] : 0xFFFFu >> (16 - kind.depth);
        ASSERT_EQ(image.samples[i], onWhite(picture.samples[pixel + i % colors], alpha, kind.depth));
      }
    }
  }
}

TEST(PngInPdf, HasItsTransparentColorsOnWhiteInAnArchiveWithoutTransparency) {
  PngPicture picture{.width = 2, .colors = kPalette, .depth = 1, .palette = "\x10\x20\x30\x40\x50\x60"};
  picture.transparency = std::string(1, '\0');
  picture.samples = {0, 1};
  WrittenPictures written(Standard::A1b);
  const auto image = written.image(written.write(makePng(picture)).value()).value();
  EXPECT_EQ(image.mask, 0);
  EXPECT_TRUE(has(image.entries, "[/Indexed/DeviceRGB 1(\xFF\xFF\xFF\x40\x50\x60)]"));
  EXPECT_EQ(image.samples, picture.samples);
}

TEST(PngInPdf, HasATransparentColorOf16BitsInWhiteInAnArchiveWithoutTransparency) {
  PngPicture picture{.width = 2, .colors = kGray, .depth = 16, .samples = {0x1234, 0x1235}};
  picture.transparency = "\x12\x34";
  WrittenPictures written(Standard::A1b);
  const auto image = written.image(written.write(makePng(picture)).value()).value();
  EXPECT_EQ(image.mask, 0);
  EXPECT_EQ(image.samples, (std::vector<unsigned>{255, 0x12}));
}

TEST(PngInPdf, KeepsItsAlphaInAnArchiveOfLevel2) {
  WrittenPictures written(Standard::A2u);
  const auto image = written.image(written.write(makePng(pictureOf({kRgbAlpha, 8}, 5, 5))).value()).value();
  EXPECT_NE(image.mask, 0);
}

TEST(PngInPdf, KeepsItsBytesWhereItHasNoAlphaAndNoInterlace) {
  for (const Kind& kind : kKinds) {
    const PngPicture picture = pictureOf(kind, 13, 7);
    WrittenPictures written;
    const auto image = written.image(written.write(makePng(picture)).value());
    EXPECT_EQ(image->stream == deflated(filteredRows(picture)), !hasAlpha(picture));
  }
}

TEST(PngInPdf, MayHaveItsPixelsInManyChunks) {
  for (const std::size_t size : {1u, 2u, 100u}) {
    for (const Kind& kind : kKinds) {
      PngPicture picture = pictureOf(kind, 9, 9);
      const auto expected = imagesOf(makePng(picture));
      picture.chunkSize = size;
      EXPECT_EQ(imagesOf(makePng(picture))->colors.samples, expected->colors.samples);
    }
  }
}

TEST(PngInPdf, HasAPaletteOfItsColors) {
  PngPicture picture = pictureOf({kPalette, 2}, 3, 3);
  picture.palette = "abcdefghi";
  EXPECT_TRUE(has(entriesOf(makePng(picture)), "/ColorSpace[/Indexed/DeviceRGB 2(abcdefghi)]/BitsPerComponent 2"));
  picture.palette = "abcdefghijklmno";  // of five colours four can be used
  EXPECT_TRUE(has(entriesOf(makePng(picture)), "/ColorSpace[/Indexed/DeviceRGB 3(abcdefghijkl)]"));
}

TEST(PngInPdf, HasAMaskForThePalettesTransparentColors) {
  for (const int depth : {1, 2, 4, 8}) {
    for (const bool isInterlaced : {false, true}) {
      PngPicture picture = pictureOf({kPalette, depth}, 21, 10, isInterlaced);
      picture.transparency = "\x10\x80";
      const auto images = imagesOf(makePng(picture));
      ASSERT_TRUE(images && images->mask);
      EXPECT_EQ(images->colors.samples, picture.samples);
      std::vector<unsigned> alphas;
      for (const unsigned index : picture.samples) {
        alphas.push_back(index == 0 ? 0x10 : index == 1 ? 0x80 : 0xFF);
      }
      EXPECT_EQ(images->mask->depth, 8);
      EXPECT_EQ(images->mask->samples, alphas);
    }
  }
}

TEST(PngInPdf, LeavesOutTheColorThatIsTransparent) {
  PngPicture gray = pictureOf({kGray, 4}, 5, 5);
  gray.transparency = std::string("\0\x0A", 2);
  EXPECT_TRUE(has(entriesOf(makePng(gray)), "/Mask[10 10]"));
  gray.isInterlaced = true;
  EXPECT_TRUE(has(entriesOf(makePng(gray)), "/Mask[10 10]"));
  gray.transparency = "\xFF\xFA";  // bits that the depth does not have are ignored
  EXPECT_TRUE(has(entriesOf(makePng(gray)), "/Mask[10 10]"));
  PngPicture rgb = pictureOf({kRgb, 8}, 5, 5);
  rgb.transparency = std::string("\0\x01\0\xFF\0\x10", 6);
  EXPECT_TRUE(has(entriesOf(makePng(rgb)), "/Mask[1 1 255 255 16 16]"));
}

// Programs do not compare colours of 16 bits.
TEST(PngInPdf, HasAMaskForATransparentColorOf16Bits) {
  for (const Kind& kind : {Kind{kGray, 16}, Kind{kRgb, 16}}) {
    for (const bool isInterlaced : {false, true}) {
      PngPicture picture = pictureOf(kind, 5, 5, isInterlaced);
      const auto components = static_cast<std::size_t>(picture.components());
      picture.transparency = std::string("\x01\x02\x03\x04\x05\x06", components * 2);
      EXPECT_FALSE(imagesOf(makePng(picture))->mask.has_value());  // no pixel has this colour
      std::vector<unsigned> alphas(25, 0xFF);
      for (const std::size_t pixel : {3u, 17u}) {
        const unsigned color[] = {0x102, 0x304, 0x506};
        std::copy_n(color, components, &picture.samples[pixel * components]);
        alphas[pixel] = 0;
      }
      ++picture.samples[18 * components - 1];  // almost this colour
      alphas[17] = 0xFF;
      const auto images = imagesOf(makePng(picture));
      ASSERT_TRUE(images && images->mask);
      EXPECT_EQ(images->colors.samples, picture.samples);
      EXPECT_EQ(images->mask->samples, alphas);
    }
  }
}

TEST(PngInPdf, IgnoresATransparencyThatDoesNotFit) {
  for (const Kind& kind : kKinds) {
    for (const std::string& transparency : {std::string(1, '\xFF'), std::string(5, '\xFF'), std::string(300, '\xFF')}) {
      PngPicture picture = pictureOf(kind, 3, 3);
      picture.transparency = transparency;
      const auto images = imagesOf(makePng(picture));
      ASSERT_TRUE(images.has_value());
      EXPECT_EQ(images->mask.has_value(), hasAlpha(picture));
      EXPECT_FALSE(has(entriesOf(makePng(picture)), "/Mask"));
    }
  }
}

TEST(PngInPdf, HasNoMaskWhenEachPixelIsOpaque) {
  for (const Kind& kind : {Kind{kGrayAlpha, 8}, Kind{kRgbAlpha, 8}, Kind{kGrayAlpha, 16}, Kind{kRgbAlpha, 16}}) {
    PngPicture picture = pictureOf(kind, 9, 12);
    const auto components = static_cast<std::size_t>(picture.components());
    for (std::size_t i = components - 1; i < picture.samples.size(); i += components) {
      picture.samples[i] = (1u << kind.depth) - 1;
    }
    EXPECT_FALSE(imagesOf(makePng(picture))->mask.has_value());
    --picture.samples.back();
    EXPECT_TRUE(imagesOf(makePng(picture))->mask.has_value());
  }
}

TEST(PngInPdf, MayBeWide) {
  for (const Kind& kind : {Kind{kRgbAlpha, 16}, Kind{kRgb, 8}, Kind{kGray, 1}}) {
    const PngPicture picture = pictureOf(kind, 40'000, 2);
    const auto images = imagesOf(makePng(picture));
    ASSERT_TRUE(images.has_value());
    EXPECT_EQ(images->colors.samples, hasAlpha(picture) ? partOf(picture, false) : picture.samples);
  }
}

TEST(PngInPdf, NeedsAPaletteOfWholeColors) {
  PngPicture picture = pictureOf({kPalette, 8}, 3, 3);
  picture.palette = "abcd";
  EXPECT_EQ(reasonFor(makePng(picture)), "The picture is a PNG with a broken palette.");
}

TEST(PngInPdf, NeedsAsManyRowsAsItsHeaderSays) {
  for (const Kind& kind : kKinds) {
    for (const bool isInterlaced : {false, true}) {
      const PngPicture picture = pictureOf(kind, 9, 9, isInterlaced);
      const std::string rows = filteredRows(picture);
      EXPECT_TRUE(imagesOf(pngWithRows(picture, rows)).has_value());
      EXPECT_EQ(reasonFor(pngWithRows(picture, rows + '\0')), kBroken);
      EXPECT_EQ(reasonFor(pngWithRows(picture, rows.substr(1))), kBroken);
      EXPECT_EQ(reasonFor(pngWithRows(picture, "")), kBroken);
    }
  }
}

TEST(PngInPdf, NeedsFiltersThatPngHas) {
  for (const bool isInterlaced : {false, true}) {
    const PngPicture picture = pictureOf({kRgbAlpha, 8}, 9, 9, isInterlaced);
    std::string rows = filteredRows(picture);
    for (const char filter : {'\5', '\x7F', '\xFF'}) {
      rows[0] = filter;
      EXPECT_EQ(reasonFor(pngWithRows(picture, rows)), kBroken);
    }
  }
}

// A PNG whose compressed rows are given.
std::string pngOf(const PngPicture& picture, std::string_view compressed) {
  std::string png = pngWithRows(picture, "");
  const std::size_t begin = png.find("IDAT") - 4;
  return png.substr(0, begin) + pngChunk("IDAT", compressed) + pngChunk("IEND", "");
}

TEST(PngInPdf, IsRefusedWhereverItsPixelsEndEarly) {
  for (const Kind& kind : kKinds) {
    for (const bool isInterlaced : {false, true}) {
      const PngPicture picture = pictureOf(kind, 5, 4, isInterlaced);
      const std::string compressed = deflated(filteredRows(picture));
      for (std::size_t size = 0; size < compressed.size(); ++size) {
        EXPECT_EQ(reasonFor(pngOf(picture, compressed.substr(0, size))), kBroken) << size;
      }
    }
  }
}

TEST(PngInPdf, DropsWhatComesAfterItsPixels) {
  for (const Kind& kind : kKinds) {
    const PngPicture picture = pictureOf(kind, 5, 4);
    const std::string compressed = deflated(filteredRows(picture));
    WrittenPictures written;
    const auto image = written.image(written.write(pngOf(picture, compressed + "more")).value());
    EXPECT_EQ(image->stream == compressed, !hasAlpha(picture));
  }
}

// No change of a byte leads to an image that is not whole.
TEST(PngInPdf, IsWholeOrRefusedWhateverByteIsBroken) {
  int images = 0;
  int refused = 0;
  for (const Kind& kind : {Kind{kGray, 1}, Kind{kPalette, 4}, Kind{kRgbAlpha, 16}}) {
    for (const bool isInterlaced : {false, true}) {
      PngPicture picture = pictureOf(kind, 5, 4, isInterlaced);
      picture.transparency = kind.colors == kPalette ? "\1\2" : "";
      const std::string png = makePng(picture);
      for (std::size_t at = 0; at < png.size(); ++at) {
        for (const int byte : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
          std::string broken = png;
          broken[at] = static_cast<char>(byte);
          std::string reason;
          const auto read = document::Picture::read(test::withChecksums(broken), reason);
          WrittenPictures written;
          const auto number = read ? written.write(*read) : std::nullopt;
          EXPECT_TRUE(!number || written.image(*number).has_value()) << at << " " << byte;
          ++(number ? images : refused);
        }
      }
    }
  }
  EXPECT_GT(images, 0);
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace scrivalen::typeset
