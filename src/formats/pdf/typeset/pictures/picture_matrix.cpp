#include "formats/pdf/typeset/pictures/picture_matrix.h"

#include <cstddef>

namespace scrivalen::typeset {
namespace {

// Where the corners of the stored image are in the box, each 0 (left or bottom) or 1.
struct Corners {
  int originX, originY;  // the lower left corner
  int rightX, rightY;    // the lower right corner
  int upX, upY;          // the upper left corner
};

// EXIF 2.3, 4.6.4: where the first row and the first column are shown.
constexpr Corners kCorners[] = {
    {0, 0, 1, 0, 0, 1},  // top, left
    {1, 0, 0, 0, 1, 1},  // top, right
    {1, 1, 0, 1, 1, 0},  // bottom, right
    {0, 1, 1, 1, 0, 0},  // bottom, left
    {1, 1, 1, 0, 0, 1},  // left, top
    {0, 1, 0, 0, 1, 1},  // right, top
    {0, 0, 0, 1, 1, 0},  // right, bottom
    {1, 0, 1, 1, 0, 0},  // left, bottom
};

}  // namespace

PictureMatrix pictureMatrix(int orientation, Length left, Length bottom, Length width, Length height) {
  const Corners& c = kCorners[static_cast<std::size_t>(orientation - 1)];
  return {(c.rightX - c.originX) * width, (c.rightY - c.originY) * height, (c.upX - c.originX) * width,
          (c.upY - c.originY) * height,   left + c.originX * width,        bottom + c.originY * height};
}

}  // namespace scrivalen::typeset
