#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace scrivalen::document {

/// A picture in PNG or JPEG. Its first bytes were read, not its pixels.
class Picture : public std::enable_shared_from_this<Picture> {
 public:
  enum class Format : std::uint8_t { Png, Jpeg };

  /// Recognises a picture by its first bytes. Checks the structure far enough that a reader can find its size.
  /// @param bytes   the file, copied
  /// @param reason  set to one line for a person when there is no picture: what is wrong with it
  /// @return null for one that is neither format, is broken, or has more than 64 megapixels
  static std::shared_ptr<const Picture> read(std::string_view bytes, std::string& reason);

  Format format() const { return format_; }
  std::string_view bytes() const { return bytes_; }
  std::uint32_t width() const { return width_; }    ///< in pixels
  std::uint32_t height() const { return height_; }  ///< in pixels
  double widthPt() const { return widthPt_; }       ///< as the file states its resolution; else 96 pixels an inch
  double heightPt() const { return heightPt_; }
  std::string_view mediaType() const { return format_ == Format::Png ? "image/png" : "image/jpeg"; }

 private:
  Picture() = default;

  Format format_ = Format::Png;
  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
  double widthPt_ = 0;
  double heightPt_ = 0;
  std::string bytes_;
};

}  // namespace scrivalen::document
