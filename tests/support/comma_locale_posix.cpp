#include "support/comma_locale.h"

#include "support/files.h"
#include "text/utf.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace scrivalen::test {
namespace {

constexpr const char* kName = "scrivalen_comma";

void putNumber(std::string& bytes, unsigned value) {
  for (int shift = 0; shift < 32; shift += 8) {
    bytes += static_cast<char>(value >> shift & 0xFF);
  }
}

// A locale's LC_NUMERIC file as the GNU C library reads it: a magic number, the number of values, the offset of each.
// The values are the decimal point, the thousands separator and the grouping, then the two separators as wide
// characters, and the character set. With it the tests do not depend on the locales installed on a system.
std::string commaNumbers() {
  constexpr unsigned kMark = 0x20031114;
  constexpr unsigned kValues = 6;
  constexpr unsigned kHead = 4 * (2 + kValues);
  std::string bytes;
  putNumber(bytes, kMark);
  putNumber(bytes, kValues);
  for (const unsigned offset : {0u, 2u, 4u, 8u, 12u, 16u}) {
    putNumber(bytes, kHead + offset);
  }
  bytes.append(",\0.\0\3\3\0\0", 8);
  putNumber(bytes, ',');
  putNumber(bytes, '.');
  return bytes.append("UTF-8\0", 6);
}

}  // namespace

// The C library keeps what it has read, so the files may be removed.
bool setDecimalComma() {
  const TemporaryFolder folder;
  std::error_code error;
  std::filesystem::create_directory(asPath(folder / L"scrivalen_comma"), error);
  writeBytes(folder / L"scrivalen_comma/LC_NUMERIC", commaNumbers());
  std::string path;
  scrivalen::appendUtf8(path, folder.path());
  ::setenv("LOCPATH", path.c_str(), 1);
  const bool isSet = std::setlocale(LC_NUMERIC, kName) != nullptr;
  ::unsetenv("LOCPATH");
  return isSet;
}

}  // namespace scrivalen::test
