#pragma once

#include "document/pictures/waiting_pictures.h"
#include "formats/xlsx/document/cells/rich_text.h"
#include "formats/xlsx/document/sheet/links.h"
#include "output/archive/zip_writer.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace scrivalen::xlsx {

/// The pictures of a sheet. They wait until the sheet is written.
class SheetPictures {
 public:
  /// @param topPt  from the top of the row
  void add(std::uint32_t row, std::uint32_t column, double topPt, PlacedPicture picture);
  bool isEmpty() const { return anchors_.empty(); }

  /// Writes the parts of the drawing and its pictures.
  /// @param drawing  its number
  /// @param images   how many pictures the workbook has so far; raised
  void write(ZipWriter& zip, std::size_t drawing, std::size_t& images);

 private:
  std::string anchors_;
  std::size_t count_ = 0;
  document::WaitingPictures waiting_;
};

}  // namespace scrivalen::xlsx
