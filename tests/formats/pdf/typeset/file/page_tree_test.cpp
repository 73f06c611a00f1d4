#include "formats/pdf/typeset/file/page_tree.h"
#include "formats/pdf/typeset/made_pdf_file.h"
#include "formats/pdf/typeset/pdf_objects.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

using namespace scrivalen::typeset;
using namespace scrivalen::test;

namespace {

// A tree with pages that are numbers only: no objects of theirs are written.
struct MadeTree {
  explicit MadeTree(int pages) {
    MadePdfFile made;
    PageTree tree(made.file);
    for (int i = 0; i < pages; ++i) {
      const int page = made.file.newNumber();
      order.push_back(page);
      parents[page] = tree.add(page);
    }
    EXPECT_EQ(tree.count(), pages);
    root = tree.finish();
    bytes = made.finished();
  }

  int root = 0;
  std::vector<int> order;
  std::map<int, int> parents;
  std::string bytes;
};

// Reads a node and what is below it, as a reader does. @return the number of its pages
int readNode(const PdfObjects& objects, const MadeTree& tree, int node, std::vector<int>& pages) {
  const std::string object = objects.object(node);
  EXPECT_EQ(object.substr(0, 14), "<</Type/Pages/");
  const std::vector<int> kids = referencesAfter(object, "/Kids");
  EXPECT_LE(kids.size(), 64u);
  int count = 0;
  for (const int kid : kids) {
    const auto page = tree.parents.find(kid);
    if (page != tree.parents.end()) {
      EXPECT_EQ(page->second, node);
      pages.push_back(kid);
      ++count;
    } else {
      EXPECT_EQ(numberAfter(objects.object(kid), "/Parent "), node);
      count += readNode(objects, tree, kid, pages);
    }
  }
  EXPECT_EQ(numberAfter(object, "/Count "), count);
  return count;
}

void expectWholeTree(int pages) {
  const MadeTree tree(pages);
  const PdfObjects objects(tree.bytes);
  std::vector<int> read;
  EXPECT_EQ(readNode(objects, tree, tree.root, read), pages);
  EXPECT_EQ(read, tree.order);
  EXPECT_EQ(numberAfter(objects.object(tree.root), "/Parent "), -1);
}

}  // namespace

TEST(PageTree, IsOneNodeForFewPages) {
  const MadeTree tree(2);
  EXPECT_EQ(PdfObjects(tree.bytes).object(tree.root), "<</Type/Pages/Count 2/Kids[1 0 R 3 0 R]>>");
}

TEST(PageTree, MayBeEmpty) {
  const MadeTree tree(0);
  EXPECT_EQ(PdfObjects(tree.bytes).object(tree.root), "<</Type/Pages/Count 0/Kids[]>>");
}

TEST(PageTree, IsOneNodeUpToItsMostKids) {
  const MadeTree tree(64);
  EXPECT_EQ(referencesAfter(PdfObjects(tree.bytes).object(tree.root), "/Kids").size(), 64u);
  expectWholeTree(64);
}

TEST(PageTree, GrowsByALevel) {
  const MadeTree tree(65);
  EXPECT_EQ(referencesAfter(PdfObjects(tree.bytes).object(tree.root), "/Kids").size(), 2u);
  expectWholeTree(65);
}

TEST(PageTree, HasEveryPageOnceAndInOrder) {
  for (const int pages : {1, 63, 128, 129, 4095, 4096, 4097, 5000}) {
    SCOPED_TRACE(pages);
    expectWholeTree(pages);
  }
}
