#include "support/golden.h"

#include "text/utf.h"
#include "support/files.h"

namespace scrivalen::test {

std::string golden(std::string_view path) {
  std::wstring full;
  platform::appendWide(full, SCRIVALEN_GOLDEN_FOLDER "/");
  platform::appendWide(full, path);
  return bytesOf(full);
}

}  // namespace scrivalen::test
