#pragma once

#include "document/pictures/header_image.h"
#include "output/archive/zip_writer.h"

#include <cstddef>
#include <string>

namespace scrivalen::xlsx {

/// The picture in the header of each sheet, left of its text.
class HeaderPicture {
 public:
  /// @param warnings  gets one when the picture cannot be used
  HeaderPicture(const document::FormatSettings& settings, document::OutputWarnings& warnings);

  bool exists() const { return image_.picture != nullptr; }
  /// Writes the picture. @param file  in the folder xl/media
  void writeImage(ZipWriter& zip, const std::string& file) const;
  /// Writes the drawing of a sheet, which is in VML (ECMA-376 Part 4).
  /// @param sheet  its number
  void writeDrawing(ZipWriter& zip, std::size_t sheet, const std::string& file) const;
  std::string_view extension() const;

 private:
  document::HeaderImage image_;
};

}  // namespace scrivalen::xlsx
