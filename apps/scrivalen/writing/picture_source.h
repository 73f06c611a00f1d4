#pragma once

#include <string>
#include <string_view>

namespace scrivalen::command {

/// Where the picture of an address in a document is.
struct PictureSource {
  enum class Place {
    File,       ///< a file in the folder of the input or below it
    Outside,    ///< a file elsewhere, which is not read: who wrote the text may not be who converts it
    Elsewhere,  ///< on another computer
    Nowhere     ///< the address names no file
  };

  Place place = Place::Outside;
  std::string path = {};  ///< of the file, as narrowPath has it
};

/// @param folder   of the input, with its last separator; empty: the current one
/// @param address  UTF-8, relative unless it has a scheme
PictureSource pictureSource(const std::wstring& folder, std::string_view address);

}  // namespace scrivalen::command
