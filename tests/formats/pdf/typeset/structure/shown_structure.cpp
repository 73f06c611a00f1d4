#include "formats/pdf/typeset/structure/shown_structure.h"

#include <gtest/gtest.h>

namespace scrivalen::test {
namespace {

constexpr int kArtifact = -1;
constexpr int kNone = -2;  // a span within other content

}  // namespace

ShownStructure::ShownStructure(const std::string& file) : objects_(file) {
  catalog_ = value(numberAfter(objects_.trailer(), "/Root "));
  readPages(catalog_.at("Pages").reference());
  const int number = catalog_.at("StructTreeRoot").reference();
  if (number == 0) {
    return;
  }
  const PdfValue root = value(number);
  EXPECT_TRUE(root.at("Type").isName("StructTreeRoot"));
  all_ = shown(root.at("K").reference(), number);
  readParents(value(root.at("ParentTree").reference()));
  checkParents();
}

PdfValue ShownStructure::resolved(const PdfValue& given) const {
  return given.reference() == 0 ? given : value(given.reference());
}

void ShownStructure::readPages(int node) {
  const PdfValue pages = value(node);
  if (pages.at("Type").isName("Page")) {
    pages_.push_back(pages);
    pageNumbers_.push_back(node);
    if (catalog_.has("StructTreeRoot")) {
      readContent(node, objects_.stream(pages.at("Contents").reference()));
    }
    return;
  }
  for (const PdfValue& kid : pages.at("Kids").items) {
    readPages(kid.reference());
  }
}

// Gathers the texts of each mark.
void ShownStructure::readContent(int page, const std::string& content) {
  PdfScanner scanner(content);
  std::vector<PdfValue> operands;
  std::vector<int> marks;
  const auto add = [&](const std::string& text) {
    int mark = kNone;
    for (const int open : marks) {
      mark = open != kNone ? open : mark;
    }
    EXPECT_NE(mark, kNone) << "content without a mark: " << text;
    (mark == kArtifact ? artifacts_ : texts_[{page, mark}]) += text;
  };
  while (const auto token = scanner.next()) {
    if (token->kind != PdfValue::Kind::Word) {
      operands.push_back(*token);
      continue;
    }
    if (token->text == "BMC") {
      EXPECT_TRUE(operands.back().isName("Artifact"));
      marks.push_back(kArtifact);
    } else if (token->text == "BDC") {
      const PdfValue& properties = operands.back();
      marks.push_back(properties.has("MCID") ? static_cast<int>(properties.at("MCID").number) : kNone);
      if (properties.has("MCID")) {
        EXPECT_EQ(texts_.count({page, marks.back()}), 0u) << "a mark that comes twice";
        texts_[{page, marks.back()}];
      }
    } else if (token->text == "EMC") {
      ASSERT_FALSE(marks.empty());
      marks.pop_back();
    } else if (token->text == "Tj") {
      add(operands.back().text);
    } else if (token->text == "TJ") {
      for (const PdfValue& item : operands.back().items) {
        add(item.text);
      }
    } else if (token->text == "Do") {
      add("#");
    } else if (token->text == "re") {
      add("");
    }
    operands.clear();
  }
  EXPECT_TRUE(marks.empty());
  EXPECT_FALSE(scanner.isWrong());
}

std::string ShownStructure::shown(int element, int parent) {
  const PdfValue dictionary = value(element);
  EXPECT_EQ(dictionary.at("P").reference(), parent);
  const int page = dictionary.at("Pg").reference();
  std::string text = dictionary.at("S").text + attributesOf(dictionary);
  const PdfValue& kids = dictionary.at("K");
  if (kids.kind == PdfValue::Kind::Null) {
    return text;
  }
  text += '(';
  for (const PdfValue& kid : kids.kind == PdfValue::Kind::Array ? kids.items : std::vector<PdfValue>{kids}) {
    text += (text.back() == '(' ? "" : " ") + shownKid(kid, page, element);
  }
  return text + ')';
}

std::string ShownStructure::attributesOf(const PdfValue& element) const {
  std::string text;
  const PdfValue& own = element.at("A");
  for (const char* key : {"Scope", "ColSpan", "ListNumbering", "Placement"}) {
    const PdfValue& attribute = own.at(key);
    if (attribute.kind == PdfValue::Kind::Number) {
      text += "[" + std::to_string(static_cast<int>(attribute.number)) + "]";
    } else if (!attribute.text.empty()) {
      text += "[" + attribute.text + "]";
    }
  }
  for (const char* key : {"Lang", "Alt"}) {
    text += element.has(key) ? "[" + pdfTextOf(element.at(key).text) + "]" : "";
  }
  return text;
}

std::string ShownStructure::shownKid(const PdfValue& kid, int page, int element) {
  if (kid.reference() != 0) {
    return shown(kid.reference(), element);
  }
  if (kid.kind == PdfValue::Kind::Number) {
    return shownContent({page, static_cast<int>(kid.number)}, element);
  }
  if (kid.at("Type").isName("MCR")) {
    return shownContent({kid.at("Pg").reference(), static_cast<int>(kid.at("MCID").number)}, element);
  }
  EXPECT_TRUE(kid.at("Type").isName("OBJR"));
  const PdfValue annotation = resolved(kid.at("Obj"));
  EXPECT_TRUE(annotation.has("StructParent"));
  annotations_[static_cast<int>(annotation.at("StructParent").number)] = element;
  return "@";
}

std::string ShownStructure::shownContent(const Content& content, int element) {
  EXPECT_TRUE(elements_.emplace(content, element).second) << "content of two elements";
  EXPECT_EQ(texts_.count(content), 1u) << "content that no page has";
  return "'" + texts_[content] + "'";
}

void ShownStructure::readParents(const PdfValue& node) {
  for (const PdfValue& kid : node.at("Kids").items) {
    const PdfValue below = value(kid.reference());
    const std::size_t before = parents_.size();
    readParents(below);
    EXPECT_GT(parents_.size(), before);
    EXPECT_EQ(below.at("Limits").items.at(1).number, parents_.rbegin()->first);
  }
  const std::vector<PdfValue>& pairs = node.at("Nums").items;
  for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
    const int key = static_cast<int>(pairs[i].number);
    EXPECT_TRUE(parents_.empty() || parents_.rbegin()->first < key);
    parents_[key] = pairs[i + 1];
  }
}

void ShownStructure::checkParents() {
  EXPECT_EQ(elements_.size(), texts_.size()) << "content of no element";
  for (const auto& [key, element] : annotations_) {
    EXPECT_EQ(parents_[key].reference(), element);
  }
  std::size_t count = 0;
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    if (!pages_[i].has("StructParents")) {
      continue;
    }
    const PdfValue list = resolved(parents_[static_cast<int>(pages_[i].at("StructParents").number)]);
    for (std::size_t id = 0; id < list.items.size(); ++id, ++count) {
      EXPECT_EQ(list.items[id].reference(), (elements_[{pageNumbers_[i], static_cast<int>(id)}]));
    }
  }
  EXPECT_EQ(count, elements_.size());
}

}  // namespace scrivalen::test
