#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace scrivalen::document {

/// A picture in PNG or JPEG.
class Picture : public std::enable_shared_from_this<Picture> {
 public:
  enum class Format : std::uint8_t { Png, Jpeg };

  /// Recognises a picture by its first bytes. Checks that it is whole and of a kind that every reader shows; its pixels
  /// are not decoded.
  /// @param bytes   the file, copied
  /// @param reason  set to one line for a person when there is no picture: what is wrong with it
  /// @return null for one that is neither format, is broken, or has more than 64 million pixels
  static std::shared_ptr<const Picture> read(std::string_view bytes, std::string& reason);

  Format format() const { return format_; }
  std::string_view bytes() const { return bytes_; }
  std::uint32_t width() const { return width_; }    ///< in pixels, as stored
  std::uint32_t height() const { return height_; }  ///< in pixels, as stored
  /// How a JPEG is turned and mirrored to be shown, 1 (not at all) to 8, as in EXIF. A reader of the file does so; a
  /// format that takes only its pixels has to.
  int orientation() const { return orientation_; }
  /// As shown, so turned: as the file states its resolution, or else with 96 pixels an inch.
  double widthPt() const { return widthPt_; }
  double heightPt() const { return heightPt_; }
  struct Size {
    double widthPt;
    double heightPt;
  };
  /// As shown.
  /// @param widthPt  that is asked for; 0: its own
  Size shownSize(double widthPt) const;
  /// How the name of a file with such a picture ends.
  static std::string_view extensionOf(Format format) { return format == Format::Png ? ".png" : ".jpeg"; }
  std::string_view mediaType() const { return format_ == Format::Png ? "image/png" : "image/jpeg"; }

 private:
  Picture() = default;

  Format format_ = Format::Png;
  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
  int orientation_ = 1;
  double widthPt_ = 0;
  double heightPt_ = 0;
  std::string bytes_;
};

}  // namespace scrivalen::document
