#include "support/documents/golden.h"

#include "support/files.h"
#include "text/utf.h"

namespace scrivalen::test {

std::string golden(std::string_view path) {
  std::wstring full;
  scrivalen::appendWide(full, SCRIVALEN_GOLDEN_FOLDER "/");
  scrivalen::appendWide(full, path);
  return bytesOf(full);
}

}  // namespace scrivalen::test
