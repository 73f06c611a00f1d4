#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// The stream of an image (PDF 1.7, 8.9.5), encoded.
struct ImageData {
  std::string entries;      ///< of its dictionary, other than its length and mask
  std::string_view source;  ///< the stream's bytes where they are those of the picture's file
  std::string own;          ///< the stream's bytes where they are not

  std::string_view bytes() const { return own.empty() ? source : std::string_view(own); }
};

/// A picture as its colours and, if parts of it are transparent, how opaque each pixel is.
struct PictureData {
  ImageData colors;
  std::optional<ImageData> mask;
};

/// The entries that every image has.
/// @param space  the name or array of its colours
/// @param depth  bits of a component
std::string imageEntries(std::uint32_t width, std::uint32_t height, std::string_view space, std::uint32_t depth);

}  // namespace scrivalen::typeset
