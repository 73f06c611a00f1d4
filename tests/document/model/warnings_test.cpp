#include "document/model/warnings.h"

#include <gtest/gtest.h>

namespace scrivalen::document {

bool operator==(const Warning& a, const Warning& b) {
  return a.output == b.output && a.code == b.code && a.count == b.count && a.message == b.message;
}

void PrintTo(const Warning& warning, std::ostream* out) {
  *out << warning.output << " " << static_cast<int>(warning.code) << " " << warning.count << " " << warning.message;
}

namespace {

using List = std::vector<Warning>;

TEST(Warnings, ComeInTheOrderOfTheirFirstOccurrence) {
  Warnings warnings;
  warnings.add(1, WarningCode::TextCut, "b");
  warnings.add(0, WarningCode::TextCut, "a");
  warnings.add(1, WarningCode::TextCut, "b");
  EXPECT_EQ(warnings.all(), (List{{1, WarningCode::TextCut, 2, "b"}, {0, WarningCode::TextCut, 1, "a"}}));
}

TEST(Warnings, AreCountedForEachOutputCodeAndMessage) {
  Warnings warnings;
  OutputWarnings first(warnings, 0);
  OutputWarnings second(warnings, 1);
  first.add(WarningCode::CharactersReplaced, "a", 2);
  second.add(WarningCode::CharactersReplaced, "a");
  first.add(WarningCode::SomethingLeftOut, "a");
  first.add(WarningCode::CharactersReplaced, "b");
  first.add(WarningCode::CharactersReplaced, "a", 3);
  EXPECT_EQ(warnings.all(), (List{{0, WarningCode::CharactersReplaced, 5, "a"},
                                  {1, WarningCode::CharactersReplaced, 1, "a"},
                                  {0, WarningCode::SomethingLeftOut, 1, "a"},
                                  {0, WarningCode::CharactersReplaced, 1, "b"}}));
}

void addDifferent(Warnings& warnings, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    warnings.add(kAllOutputs, WarningCode::InputMended, std::to_string(i));
  }
}

TEST(Warnings, AreAllListedUpToTheMostThatAreKept) {
  Warnings warnings;
  addDifferent(warnings, 1000);
  ASSERT_EQ(warnings.all().size(), 1000u);
  EXPECT_EQ(warnings.all().back(), (Warning{kAllOutputs, WarningCode::InputMended, 1, "999"}));
}

TEST(Warnings, SayInTheLastPlaceHowManyMoreThereAre) {
  Warnings warnings;
  addDifferent(warnings, 1003);
  ASSERT_EQ(warnings.all().size(), 1000u);
  EXPECT_EQ(warnings.all()[998], (Warning{kAllOutputs, WarningCode::InputMended, 1, "998"}));
  EXPECT_EQ(warnings.all().back(),
            (Warning{kAllOutputs, WarningCode::SomethingLeftOut, 4, "further warnings are not listed"}));
}

TEST(Warnings, CountFurtherOnesOnceEach) {
  Warnings warnings;
  addDifferent(warnings, 1003);
  addDifferent(warnings, 1003);
  warnings.add(0, WarningCode::InputMended, "1002");
  warnings.add(0, WarningCode::TextCut, "1002", 7);
  EXPECT_EQ(warnings.all().back().count, 6u);
}

// Their number is limited, since each that is counted takes memory.
TEST(Warnings, CountAtLeast16384FurtherOnes) {
  Warnings warnings;
  addDifferent(warnings, 1000 + 16384);
  EXPECT_EQ(warnings.all().back(),
            (Warning{kAllOutputs, WarningCode::SomethingLeftOut, 16385, "further warnings are not listed"}));
  addDifferent(warnings, 20000);
  EXPECT_EQ(warnings.all().back(),
            (Warning{kAllOutputs, WarningCode::SomethingLeftOut, 16385, "further warnings, at least, are not listed"}));
}

TEST(Warnings, GoOnCountingThoseThatAreListedWhenTheListIsFull) {
  Warnings warnings;
  addDifferent(warnings, 1001);
  warnings.add(kAllOutputs, WarningCode::InputMended, "7", 5);
  EXPECT_EQ(warnings.all()[7], (Warning{kAllOutputs, WarningCode::InputMended, 6, "7"}));
}

}  // namespace
}  // namespace scrivalen::document
