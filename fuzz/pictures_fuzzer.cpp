#include "document/pictures/picture.h"
#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/pictures/picture_writer.h"
#include "input.h"
#include "output/output_buffer.h"
#include "support/documents/pdf_image.h"
#include "support/documents/pictures.h"
#include "support/documents/png_maker.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

using scrivalen::document::Picture;
using scrivalen::fuzz::Input;
using scrivalen::test::PngPicture;
using scrivalen::test::readPdfImage;

// Writes a picture into a PDF. If the first byte is odd, the others are its file, whose chunks get their checksums.
// Else they are the header and the rows of a PNG, which is made of them: by chance, hardly any compressed bytes would
// have the right checksum.
namespace {

struct MemorySink : scrivalen::ByteSink {
  bool take(const char* data, std::size_t size) override {
    bytes.append(data, size);
    return true;
  }
  std::string bytes;
};

struct Kind {
  int colors;
  int depth;
};

constexpr Kind kKinds[] = {{0, 1}, {0, 2}, {0, 4}, {0, 8}, {0, 16}, {2, 8}, {2, 16}, {3, 1},
                           {3, 2}, {3, 4}, {3, 8}, {4, 8}, {4, 16}, {6, 8}, {6, 16}};

void require(bool good, const char* problem) {
  if (!good) {
    std::fprintf(stderr, "%s\n", problem);
    std::abort();
  }
}

std::string bytesOf(Input& input, int count) {
  std::string bytes;
  for (int i = 0; i < count; ++i) {
    bytes += static_cast<char>(input.byte());
  }
  return bytes;
}

std::string madePng(Input& input) {
  const Kind& kind = kKinds[static_cast<std::size_t>(input.byte()) % std::size(kKinds)];
  PngPicture picture;
  picture.colors = kind.colors;
  picture.depth = kind.depth;
  const int flags = input.byte();
  picture.isInterlaced = (flags & 1) != 0;
  picture.chunkSize = (flags & 2) != 0 ? 1 + static_cast<std::size_t>(input.byte()) : 0;
  picture.width = static_cast<std::uint32_t>(input.byte() % 64 + 1);
  picture.height = static_cast<std::uint32_t>(input.byte() % 64 + 1);
  picture.palette = bytesOf(input, (flags & 4) != 0 ? input.byte() * 3 : input.byte());
  picture.transparency = bytesOf(input, (flags & 8) != 0 ? input.byte() % 8 : input.byte());
  if ((flags & 16) != 0) {  // a picture that is right
    const std::size_t count =
        std::size_t{picture.width} * picture.height * static_cast<std::size_t>(picture.components());
    for (std::size_t i = 0; i < count; ++i) {
      picture.samples.push_back(static_cast<unsigned>(input.byte()) & ((1u << kind.depth) - 1));
    }
    return scrivalen::test::makePng(picture);
  }
  std::string rows;
  while (!input.empty()) {
    rows += static_cast<char>(input.byte());
  }
  return scrivalen::test::pngWithRows(picture, rows);
}

void check(const Picture& picture) {
  MemorySink sink;
  scrivalen::OutputBuffer out(sink);
  scrivalen::typeset::PdfFile file(out);
  file.begin();
  scrivalen::typeset::PictureWriter writer(file);
  const std::uint64_t before = file.size();
  std::string reason;
  const std::optional<int> number = writer.write(picture, reason);
  const std::uint64_t after = file.size();
  require(number.has_value() == reason.empty(), "a picture and a reason");
  require(number.has_value() || before == after, "an object of a broken picture");
  std::string again;
  require(writer.write(picture, again) == number && again == reason && file.size() == after, "it was not kept");
  if (!number) {
    return;
  }
  out.flush();
  // Decoding in the check is slow.
  if (std::uint64_t{picture.width()} * picture.height() > 1'000'000) {
    return;
  }
  const auto image = readPdfImage(sink.bytes, *number);
  require(image.has_value(), "an image that is not whole");
  require(image->width == picture.width() && image->height == picture.height(), "another size");
  require(picture.format() == Picture::Format::Png || image->stream == picture.bytes(), "another JPEG");
  if (image->mask != 0) {
    const auto mask = readPdfImage(sink.bytes, image->mask);
    require(mask && mask->width == image->width && mask->height == image->height, "a mask that is not whole");
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) { return 0; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  Input input(data + 1, size - 1);
  const std::string bytes =
      (data[0] & 1) != 0
          ? scrivalen::test::withChecksums(std::string(reinterpret_cast<const char*>(data) + 1, size - 1))
          : madePng(input);
  std::string reason;
  if (const auto picture = Picture::read(bytes, reason)) {
    check(*picture);
  }
  return 0;
}
