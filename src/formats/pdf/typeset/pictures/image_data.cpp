#include "formats/pdf/typeset/pictures/image_data.h"

#include "formats/pdf/typeset/file/syntax.h"

namespace scrivalen::typeset {

std::string imageEntries(std::uint32_t width, std::uint32_t height, std::string_view space, std::uint32_t depth) {
  std::string entries = "/Type/XObject/Subtype/Image/Width ";
  appendInteger(entries, width);
  entries += "/Height ";
  appendInteger(entries, height);
  entries.append("/ColorSpace").append(space).append("/BitsPerComponent ");
  appendInteger(entries, depth);
  return entries;
}

}  // namespace scrivalen::typeset
