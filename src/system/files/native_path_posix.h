#pragma once

#include "text/utf.h"

#include <climits>
#include <cstddef>
#include <string>

namespace scrivalen {

inline constexpr char32_t kByteEscape = 0xDC00;  ///< plus a byte that is not UTF-8, 0x80 or above

/// Writes one character of a path. Returns the number of bytes; 0 for a character that no path can contain.
inline std::size_t putPathCharacter(char32_t c, char* out) noexcept {
  if (c >= kByteEscape + 0x80 && c <= kByteEscape + 0xFF) {
    *out = static_cast<char>(static_cast<unsigned char>(c - kByteEscape));
    return 1;
  }
  return isCharacter(c) ? putUtf8(c, out) : 0;
}

/// A path in the system's encoding. It does not allocate, so that cleaning up works even without memory. A path that is
/// too long is cut, but stays too long for the system.
class NativePath {
 public:
  explicit NativePath(const std::wstring& path) noexcept {
    const wchar_t* const end = path.data() + path.size();
    std::size_t size = 0;
    for (const wchar_t* at = path.data(); at != end && size < PATH_MAX;) {
      const std::size_t bytes = putPathCharacter(nextCharacter(at, end), path_ + size);
      if (bytes == 0) {
        isValid_ = false;
        size = 0;
        break;
      }
      size += bytes;
    }
    path_[size] = '\0';
  }

  /// Whether such a path can exist; if not, c_str is empty, which names no file.
  bool isValid() const noexcept { return isValid_; }
  const char* c_str() const noexcept { return path_; }

 private:
  char path_[PATH_MAX + 4];  // the last character may extend past PATH_MAX
  bool isValid_ = true;
};

}  // namespace scrivalen
