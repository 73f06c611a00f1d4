#include "api/api_support.h"
#include "support/faults/allocation_counter.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace scrivalen::test;

namespace {

// The bytes that a document allocates for a table with one row, of cells of the widest span.
std::size_t bytesOfSpans(const char* format, int cells) {
  Written document(format);
  const std::size_t before = allocatedBytes();
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_cell_style style{};
  style.size = sizeof style;
  style.span = 16384;
  for (int i = 0; i < cells; ++i) {
    scrivalen_begin_cell(document, &style);
    scrivalen_end(document);
  }
  scrivalen_end(document);
  scrivalen_end(document);
  const std::size_t bytes = allocatedBytes() - before;
  document.closed();
  EXPECT_EQ(document.result, SCRIVALEN_OK) << document.error();
  return bytes;
}

}  // namespace

// The document's own memory is a few MiB, which a format that needs hardly any cannot be measured by.
TEST(DocumentMemory, DoesNotGrowWithTheSpansOfARow) {
  for (const std::string& format : formats()) {
    const std::size_t one = bytesOfSpans(format.c_str(), 1);
    EXPECT_LT(one, 32u << 20) << format;
    EXPECT_LT(bytesOfSpans(format.c_str(), 61), std::max<std::size_t>(3 * one, 8u << 20)) << format;
  }
}
