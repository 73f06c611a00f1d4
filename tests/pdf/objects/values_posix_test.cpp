#include "pdf/objects/values.h"
#include "pdf/objects/written.h"
#include "support/time_zone.h"

#include <gtest/gtest.h>

using namespace PDFStuffer;

TEST(PdfDate, IsLocalTimeInClassicForm) {
  const scrivalen::test::TimeZone tokyo("JST-9");
  CPDFDate date(1578821405);
  EXPECT_EQ(scrivalen::test::written(date), "(D20200112183005Z)");
}

TEST(PdfDate, IsUtcInConformingForm) {
  const scrivalen::test::TimeZone tokyo("JST-9");
  CPDFDate date(1578821405);
  EXPECT_EQ(scrivalen::test::conforming(date), "(D:20200112093005Z)");
}
