#include "formats/pdf/typeset/file/named_places.h"
#include "formats/pdf/typeset/made_pdf_file.h"
#include "formats/pdf/typeset/pdf_objects.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

using namespace scrivalen::typeset;
using namespace scrivalen::test;

namespace {

Place pageAt(int page) { return {page, page, 700}; }

// The least and the greatest name in a node that is not the root; names without special characters only.
std::pair<std::string, std::string> limitsOf(const std::string& node) {
  const std::size_t begin = node.find("/Limits[(") + 9;
  const std::size_t middle = node.find(")(", begin);
  return {node.substr(begin, middle - begin), node.substr(middle + 2, node.find(")]", middle) - middle - 2)};
}

// Looks a name up as a reader does: down from the root, through the nodes whose limits it is between. @return the
// number of its page, 0 without one
int lookUp(const PdfObjects& objects, int node, const std::string& name) {
  const std::string object = objects.object(node);
  for (const int kid : referencesAfter(object, "/Kids")) {
    const auto [first, last] = limitsOf(objects.object(kid));
    if (first <= name && name <= last) {
      return lookUp(objects, kid, name);
    }
  }
  const int page = numberAfter(object, "(" + name + ")[");
  return page == -1 ? 0 : page;
}

}  // namespace

TEST(NamedPlaces, AreNoTreeWithoutNames) {
  MadePdfFile made;
  EXPECT_EQ(NamedPlaces().write(made.file), 0);
}

TEST(NamedPlaces, AreFoundByName) {
  NamedPlaces places;
  places.add("there", pageAt(3));
  ASSERT_NE(places.find("there"), nullptr);
  EXPECT_EQ(places.find("there")->page, 3);
  EXPECT_EQ(places.find("here"), nullptr);
}

TEST(NamedPlaces, KeepTheFirstPlaceOfAName) {
  NamedPlaces places;
  places.add("twice", pageAt(3));
  places.add("twice", pageAt(4));
  EXPECT_EQ(places.find("twice")->page, 3);
}

TEST(NamedPlaces, AreSortedByTheirBytes) {
  NamedPlaces places;
  places.add("b", {7, 1, 100});
  places.add("\xC3\xA9", {9, 3, 300});
  places.add("B(1)", {8, 2, 200});
  MadePdfFile made;
  const int root = places.write(made.file);
  const PdfObjects objects(made.finished());
  EXPECT_EQ(objects.object(root), "<</Kids[1 0 R]>>");
  EXPECT_EQ(objects.object(1),
            "<</Limits[(B\\(1\\))(\xC3\xA9)]/Names[(B\\(1\\))[8 0 R/XYZ null 200 null](b)[7 0 R/XYZ null 100 null]"
            "(\xC3\xA9)[9 0 R/XYZ null 300 null]]>>");
}

TEST(NamedPlaces, AreInATreeThatReadersCanSearch) {
  for (const int count : {1, 64, 65, 4096, 4097, 5000}) {
    SCOPED_TRACE(count);
    NamedPlaces places;
    for (int i = 1; i <= count; ++i) {
      places.add("place" + std::to_string(i), pageAt(i));
    }
    MadePdfFile made;
    const int root = places.write(made.file);
    const PdfObjects objects(made.finished());
    EXPECT_EQ(objects.object(root).find("/Limits"), std::string::npos);
    int found = 0;
    for (int i = 1; i <= count; ++i) {
      found += lookUp(objects, root, "place" + std::to_string(i)) == i ? 1 : 0;
    }
    EXPECT_EQ(found, count);
    EXPECT_EQ(lookUp(objects, root, "place0"), 0);
  }
}

TEST(NamedPlaces, AreTheSameBytesInAnyOrder) {
  NamedPlaces forwards;
  NamedPlaces backwards;
  for (int i = 0; i < 500; ++i) {
    forwards.add("place" + std::to_string(i), pageAt(i));
    backwards.add("place" + std::to_string(499 - i), pageAt(499 - i));
  }
  MadePdfFile first;
  MadePdfFile second;
  EXPECT_EQ(forwards.write(first.file), backwards.write(second.file));
  EXPECT_EQ(first.finished(), second.finished());
}
