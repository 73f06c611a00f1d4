#include "formats/pdf/typeset/file/outline.h"
#include "formats/pdf/typeset/made_pdf_file.h"
#include "formats/pdf/typeset/pdf_objects.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace scrivalen::typeset;
using namespace scrivalen::test;

namespace {

constexpr Place kPlace{90, 1, 700};

struct Heading {
  int level;
  const char* text;
};

// The titles of an outline, each below another in brackets; one that readers show closed has a minus.
class ReadOutline {
 public:
  explicit ReadOutline(const std::vector<Heading>& headings) : bytes_(made(headings)), objects_(bytes_) {}

  std::string text() {
    const std::string root = objects_.object(root_);
    EXPECT_EQ(root.substr(0, 16), "<</Type/Outlines");
    int shown = 0;
    const std::string all = textOf(root_, root, shown);
    EXPECT_EQ(numberAfter(root, "/Count "), shown);
    return all;
  }

 private:
  std::string made(const std::vector<Heading>& headings) {
    MadePdfFile file;
    Outline outline(file.file);
    for (const Heading& heading : headings) {
      outline.add(heading.level, heading.text, kPlace);
    }
    root_ = outline.finish();
    return file.finished();
  }

  // Follows the entries of a parent forwards, and checks that each names its parent and the one before.
  std::string textOf(int parent, const std::string& object, int& shown) {
    std::string all;
    int previous = -1;
    int entry = numberAfter(object, "/First ");
    while (entry != -1) {
      const std::string own = objects_.object(entry);
      EXPECT_EQ(numberAfter(own, "/Parent "), parent);
      EXPECT_EQ(numberAfter(own, "/Prev "), previous);
      EXPECT_NE(own.find("/Dest[90 0 R/XYZ null 700 null]"), own.npos);
      all += titleOf(own);
      ++shown;
      int below = 0;
      const std::string kids = textOf(entry, own, below);
      if (!kids.empty()) {
        const int count = numberAfter(own, "/Count ");
        EXPECT_EQ(count < 0 ? -count : count, below);
        all += (count < 0 ? "-(" : "(") + kids + ")";
        shown += count < 0 ? 0 : below;
      } else {
        EXPECT_EQ(own.find("/Count"), own.npos);
      }
      previous = entry;
      entry = numberAfter(own, "/Next ");
    }
    EXPECT_EQ(numberAfter(object, "/Last "), previous);
    return all;
  }

  static std::string titleOf(const std::string& entry) {
    const std::size_t begin = entry.find("/Title(") + 7;
    return entry.substr(begin, entry.find(')') - begin);
  }

  int root_ = 0;
  std::string bytes_;
  PdfObjects objects_;
};

std::string read(const std::vector<Heading>& headings) { return ReadOutline(headings).text(); }

}  // namespace

TEST(PdfOutlineTree, HasEntriesInOrder) { EXPECT_EQ(read({{1, "a"}, {1, "b"}, {1, "c"}}), "abc"); }

TEST(PdfOutlineTree, NestsByLevel) { EXPECT_EQ(read({{1, "a"}, {2, "b"}, {2, "c"}, {1, "d"}, {2, "e"}}), "a(bc)d(e)"); }

TEST(PdfOutlineTree, ShowsTwoLevelsAtFirst) {
  EXPECT_EQ(read({{1, "a"}, {2, "b"}, {3, "c"}, {4, "d"}, {2, "e"}}), "a(b-(c-(d))e)");
}

TEST(PdfOutlineTree, NestsASkippedLevelByOne) {
  EXPECT_EQ(read({{1, "a"}, {3, "b"}, {3, "c"}, {1, "d"}}), "a(bc)d");
  EXPECT_EQ(read({{1, "a"}, {3, "b"}, {2, "c"}}), "a(bc)");
}

TEST(PdfOutlineTree, MayBeginBelowTheFirstLevel) {
  EXPECT_EQ(read({{3, "a"}, {2, "b"}, {1, "c"}, {2, "d"}}), "abc(d)");
}

TEST(PdfOutlineTree, ReturnsThroughSeveralLevels) {
  EXPECT_EQ(read({{1, "a"}, {2, "b"}, {3, "c"}, {4, "d"}, {1, "e"}, {6, "f"}}), "a(b-(c-(d)))e(f)");
}

TEST(PdfOutlineTree, WritesAnEntryAsTheStandardHasIt) {
  MadePdfFile file;
  Outline outline(file.file);
  EXPECT_TRUE(outline.isEmpty());
  outline.add(1, "Prices (net)", {5, 1, 812});
  EXPECT_FALSE(outline.isEmpty());
  EXPECT_EQ(outline.finish(), 1);
  const PdfObjects objects(file.finished());
  EXPECT_EQ(objects.object(1), "<</Type/Outlines/First 2 0 R/Last 2 0 R/Count 1>>");
  EXPECT_EQ(objects.object(2), "<</Title(Prices \\(net\\))/Parent 1 0 R/Dest[5 0 R/XYZ null 812 null]>>");
}

TEST(PdfOutlineTree, HoldsManyEntries) {
  std::vector<Heading> headings;
  std::string expected;
  for (int i = 0; i < 2000; ++i) {
    headings.push_back({1, "x"});
    headings.push_back({2, "y"});
    expected += "x(y)";
  }
  EXPECT_EQ(read(headings), expected);
}
