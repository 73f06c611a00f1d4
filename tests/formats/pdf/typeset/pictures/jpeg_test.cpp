#include "formats/pdf/typeset/pictures/written_pictures.h"
#include "support/documents/pictures.h"

namespace scrivalen::typeset {
namespace {

using test::greyJpeg;
using test::jpegSegment;

std::string adobe(char transform) { return jpegSegment(0xEE, std::string("Adobe\0\x64\0\0\0\0", 11) + transform); }

// A JPEG without pixels, whose components have these names.
std::string jpegOf(std::string_view names, const std::string& segments = {}) {
  std::string frame = std::string("\x08\0\x03\0\x05", 5) + static_cast<char>(names.size());
  for (const char name : names) {
    frame += name;
    frame += std::string("\x11\0", 2);
  }
  return "\xFF\xD8" + segments + jpegSegment(0xC0, frame) + jpegSegment(0xDA, "") + "\xFF\xD9";
}

std::string entriesOf(std::string_view jpeg) {
  WrittenPictures written;
  const std::string entries(written.image(written.write(jpeg).value()).value().entries);
  return entries.substr(0, entries.find("/Length"));
}

constexpr char kSize[] = "/Type/XObject/Subtype/Image/Width 5/Height 3";
constexpr char kRest[] = "/BitsPerComponent 8/Filter/DCTDecode";

TEST(JpegInPdf, KeepsItsBytes) {
  for (const std::string& jpeg : {greyJpeg(30, 20), greyJpeg(8, 8, jpegSegment(0xFE, "a comment") + "\xFF\xFF\x01")}) {
    WrittenPictures written;
    const auto image = written.image(written.write(jpeg).value());
    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(image->stream, jpeg);
  }
}

TEST(JpegInPdf, HasTheColorsOfItsComponents) {
  EXPECT_EQ(entriesOf(jpegOf("\1")), std::string(kSize) + "/ColorSpace/DeviceGray" + kRest);
  EXPECT_EQ(entriesOf(jpegOf("\1\2\3")), std::string(kSize) + "/ColorSpace/DeviceRGB" + kRest);
  EXPECT_EQ(entriesOf(jpegOf("\1\2\3\4")), std::string(kSize) + "/ColorSpace/DeviceCMYK" + kRest);
}

TEST(JpegInPdf, IsInvertedWhereItIsCmykWithAdobesMarker) {
  const std::string expected = std::string(kSize) + "/ColorSpace/DeviceCMYK" + kRest + "/Decode[1 0 1 0 1 0 1 0]";
  EXPECT_EQ(entriesOf(jpegOf("\1\2\3\4", adobe('\0'))), expected);
  EXPECT_EQ(entriesOf(jpegOf("\1\2\3\4", adobe('\2'))), expected);
  EXPECT_EQ(entriesOf(jpegOf("\1", adobe('\0'))), std::string(kSize) + "/ColorSpace/DeviceGray" + kRest);
}

TEST(JpegInPdf, IsRefusedInAnArchiveWhereItIsCmyk) {
  for (const Standard standard : {Standard::A1b, Standard::A2u}) {
    WrittenPictures written(standard);
    EXPECT_FALSE(written.write(jpegOf("\1\2\3\4")));
    EXPECT_EQ(written.reason(),
              "The picture is a JPEG with colours for printing (CMYK), which a file for archives in sRGB cannot have.");
    EXPECT_TRUE(written.write(jpegOf("\1\2\3")));
  }
}

TEST(JpegInPdf, IsRgbWhereAMarkerOrTheNamesOfComponentsSaySo) {
  const std::string jfif = jpegSegment(0xE0, std::string("JFIF\0\1\2\0\0\1\0\1\0\0", 14));
  const std::string usual = std::string(kSize) + "/ColorSpace/DeviceRGB" + kRest;
  const std::string rgb = usual + "/DecodeParms<</ColorTransform 0>>";
  EXPECT_EQ(entriesOf(jpegOf("\1\2\3", adobe('\0'))), rgb);
  EXPECT_EQ(entriesOf(jpegOf("RGB")), rgb);
  EXPECT_EQ(entriesOf(jpegOf("\1\2\3", adobe('\1'))), usual);
  EXPECT_EQ(entriesOf(jpegOf("RGB", adobe('\1'))), usual);
  EXPECT_EQ(entriesOf(jpegOf("RGB", jfif)), usual);
  EXPECT_EQ(entriesOf(jpegOf("\1\2\3", jpegSegment(0xEE, "Adobe"))), usual);
}

TEST(JpegInPdf, IsWholeOrRefusedWhateverByteIsBroken) {
  const std::string jpeg = greyJpeg(8, 8, adobe('\1'));
  int images = 0;
  for (std::size_t at = 0; at < jpeg.size(); ++at) {
    for (const int byte : {0x00, 0x01, 0x7F, 0xD9, 0xDA, 0xFE, 0xFF}) {
      std::string broken = jpeg;
      broken[at] = static_cast<char>(byte);
      std::string reason;
      const auto read = document::Picture::read(broken, reason);
      WrittenPictures written;
      const auto number = read ? written.write(*read) : std::nullopt;
      if (number) {
        ++images;
        EXPECT_EQ(written.image(*number).value().stream, broken);
      }
    }
  }
  EXPECT_GT(images, 0);
}

}  // namespace
}  // namespace scrivalen::typeset
