#include "formats/pdf/typeset/pictures/png_data.h"

#include "document/pictures/bytes.h"
#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/pictures/png_file.h"
#include "formats/pdf/typeset/pictures/png_flat.h"
#include "formats/pdf/typeset/pictures/png_interlace.h"
#include "formats/pdf/typeset/pictures/png_mask.h"
#include "formats/pdf/typeset/pictures/png_rows.h"
#include "formats/pdf/typeset/pictures/row_compressor.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace scrivalen::typeset {
namespace {

constexpr std::string_view kBroken = "is a PNG with broken pixels";

constexpr std::uint32_t kMaskDepth = 8;  // of a mask that is made of colours

bool isGray(PngColors colors) { return colors == PngColors::Gray || colors == PngColors::GrayAlpha; }

// Filters are of use only where the next byte is a similar number.
bool isWorthFiltering(const PngFile& file) { return file.depth() >= 8 && file.colors() != PngColors::Palette; }

std::string colorSpaceOf(const PngFile& file, bool isOpaque) {
  if (file.colors() != PngColors::Palette) {
    return isGray(file.colors()) ? "/DeviceGray" : "/DeviceRGB";
  }
  std::string space = "[/Indexed/DeviceRGB ";
  appendInteger(space, static_cast<std::int64_t>(file.palette().size() / 3) - 1);
  appendString(space, isOpaque ? flatPalette(file) : file.palette());
  return space + "]";
}

// Readers compare the colour of a mask by a key with 8 bits, if at all, so that a picture with 16 gets a mask of its
// own.
bool hasColorKey(const PngFile& file) {
  return file.colors() != PngColors::Palette && file.depth() <= 8 && !file.transparency().empty();
}

// The colour that is transparent, as the least and most of each component (PDF 1.7, 8.9.6.4).
void appendColorKey(std::string& entries, const PngFile& file) {
  const document::Bytes key(file.transparency());
  const std::uint32_t most = (1u << file.depth()) - 1;
  entries += "/Mask[";
  for (std::size_t i = 0; i < key.size(); i += 2) {
    for (int j = 0; j < 2; ++j) {
      appendInteger(entries, key.two(i) & most);
      entries += ' ';
    }
  }
  entries.back() = ']';
}

void appendFilter(std::string& entries, const PngFile& file, std::uint32_t components, std::uint32_t depth) {
  entries += "/Filter/FlateDecode/DecodeParms<</Predictor 15/Colors ";
  appendInteger(entries, components);
  entries += "/BitsPerComponent ";
  appendInteger(entries, depth);
  entries += "/Columns ";
  appendInteger(entries, file.width());
  entries += ">>";
}

// Takes the rows of a picture, filtered, and makes those of its images.
class Encoder {
 public:
  Encoder(const PngFile& file, PictureData& data, bool isOpaque) : file_(file), data_(data) {
    if (isOpaque && needsFlattening(file)) {
      flat_.emplace(file);
      return;
    }
    if (file.hasAlpha()) {
      alpha_.emplace(file.depth() / 8, (file.components() - 1) * file.depth() / 8);
    } else if (!isOpaque && !file.transparency().empty() && !hasColorKey(file)) {
      transparentColors_.emplace(file);
    }
    if (file.hasAlpha() || file.isInterlaced()) {
      colors_.emplace();
    }
  }

  void add(std::string_view row) {
    if (flat_) {
      flat_->add(row);
    } else if (alpha_) {
      alpha_->add(row, *colors_);
    } else if (colors_) {
      colors_->add(row);
    }
    if (transparentColors_) {
      transparentColors_->add(row);
    }
  }

  void finish() {
    if (flat_) {
      data_.colors.own = flat_->finish();
    } else if (colors_) {
      data_.colors.own = colors_->finish();
    }
    if (alpha_ && !alpha_->isOpaque()) {
      std::string& entries = addMask(alpha_->finish(), file_.depth());
      appendFilter(entries, file_, 1, file_.depth());
    } else if (transparentColors_ && !transparentColors_->isOpaque()) {
      std::string& entries = addMask(transparentColors_->finish(), kMaskDepth);
      entries += "/Filter/FlateDecode";
    }
  }

 private:
  std::string& addMask(std::string rows, std::uint32_t depth) {
    ImageData& mask = data_.mask.emplace();
    mask.own = std::move(rows);
    mask.entries = imageEntries(file_.width(), file_.height(), "/DeviceGray", depth);
    return mask.entries;
  }

  const PngFile& file_;
  PictureData& data_;
  std::optional<RowCompressor> colors_;  // none where the file's own bytes serve
  std::optional<FlatRows> flat_;
  std::optional<AlphaChannel> alpha_;
  std::optional<TransparentColors> transparentColors_;
};

// Bytes after the last row would only puzzle readers.
void keepCompressed(PngFile& file, std::size_t size, ImageData& image) {
  image.source = file.compressed().substr(0, size);
  image.own = file.takeJoined();
  image.own.resize(std::min(size, image.own.size()));
}

bool encodeRows(PngFile& file, PictureData& data, bool isOpaque) {
  Encoder encoder(file, data, isOpaque);
  PngRows rows(file.compressed());
  std::string row(1 + file.rowSize(file.width()), '\0');
  for (std::uint32_t y = 0; y < file.height(); ++y) {
    if (!rows.read(row)) {
      return false;
    }
    encoder.add(row);
  }
  if (!rows.isAtEnd()) {
    return false;
  }
  keepCompressed(file, rows.used(), data.colors);
  encoder.finish();
  return true;
}

bool encodeInterlaced(const PngFile& file, PictureData& data, bool isOpaque) {
  std::string pixels;
  if (!decodeInterlaced(file, pixels)) {
    return false;
  }
  Encoder encoder(file, data, isOpaque);
  const std::size_t size = file.rowSize(file.width());
  std::string row(1 + size, '\0');
  std::string above = row;
  std::string filtered;
  for (std::size_t y = 0; y < file.height(); ++y) {
    row.replace(1, size, pixels, y * size, size);
    if (isWorthFiltering(file)) {
      applyFilter(row, above, file.pixelSize(), filtered);
      encoder.add(filtered);
      row.swap(above);
    } else {
      encoder.add(row);
    }
  }
  encoder.finish();
  return true;
}

}  // namespace

std::string_view encodePng(std::string_view png, PictureData& data, bool isOpaque) {
  PngFile file(png);
  if (file.colors() == PngColors::Palette && file.palette().empty()) {
    return "is a PNG with a broken palette";
  }
  if (!(file.isInterlaced() ? encodeInterlaced(file, data, isOpaque) : encodeRows(file, data, isOpaque))) {
    return kBroken;
  }
  std::string& entries = data.colors.entries;
  const std::uint32_t depth = isOpaque ? std::min(file.depth(), 8u) : file.depth();
  entries = imageEntries(file.width(), file.height(), colorSpaceOf(file, isOpaque), depth);
  appendFilter(entries, file, file.hasAlpha() ? file.components() - 1 : file.components(), depth);
  if (hasColorKey(file)) {
    appendColorKey(entries, file);
  }
  return "";
}

}  // namespace scrivalen::typeset
