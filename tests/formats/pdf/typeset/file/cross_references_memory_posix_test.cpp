#include "formats/pdf/typeset/file/cross_references.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <cstddef>

using scrivalen::typeset::CrossReferences;

TEST(PdfCrossReferences, TakeLessThanAByteForEachOfAMillionObjects) {
  CrossReferences references(CrossReferences::Form::Stream);
  const std::size_t before = mallinfo2().uordblks;
  int stream = 0;
  for (int number = 1; number <= 1'000'000; ++number) {
    references.newNumber();
    if (number % 129 == 1) {
      stream = number;
      references.setOffset(number, static_cast<std::size_t>(number) * 24);
    } else {
      references.setInStream(number, stream, static_cast<std::size_t>(number % 129));
    }
  }
  EXPECT_LT(mallinfo2().uordblks - before, 1'000'000u);
}
