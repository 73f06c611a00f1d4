#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/pictures/picture_writer.h"
#include "output/output_buffer.h"
#include "support/documents/pdf_image.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// A file in memory that pictures are written into.
class WrittenPictures : ByteSink {
 public:
  explicit WrittenPictures(Standard standard = Standard::None) : file_(out_, standard) { file_.begin(); }

  /// @return the number of the picture's object; none when it cannot be read
  std::optional<int> write(const document::Picture& picture) { return writer_.write(picture, reason_); }
  std::optional<int> write(std::string_view bytes) {
    const auto picture = document::Picture::read(bytes, reason_);
    EXPECT_NE(picture, nullptr) << reason_;
    return picture ? write(*picture) : std::nullopt;
  }

  /// An image of the file; its texts are valid until the next call.
  std::optional<test::PdfImage> image(int number) {
    out_.flush();
    return test::readPdfImage(bytes_, number);
  }
  const std::string& reason() const { return reason_; }
  std::uint64_t size() const { return file_.size(); }

 private:
  bool take(const char* data, std::size_t size) override {
    bytes_.append(data, size);
    return true;
  }

  std::string bytes_;
  OutputBuffer out_{*this};
  PdfFile file_;
  PictureWriter writer_{file_};
  std::string reason_;
};

}  // namespace scrivalen::typeset
