#include "formats/pdf/typeset/shown_pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <utility>

namespace scrivalen::test {
namespace {

std::vector<double> numbersAfter(std::string_view dictionary, std::string_view key) {
  std::vector<double> numbers;
  const std::size_t found = dictionary.find(std::string(key) + "[");
  if (found != dictionary.npos) {
    const std::string_view list = dictionary.substr(found + key.size() + 1);
    std::istringstream words{std::string(list.substr(0, list.find(']')))};
    for (double number = 0; words >> number;) {
      numbers.push_back(number);
    }
  }
  return numbers;
}

// Undoes the escapes of the string at a parenthesis, and moves past it.
std::string takeString(std::string_view text, std::size_t& at) {
  std::string result;
  for (++at; at < text.size() && text[at] != ')'; ++at) {
    if (text[at] == '\\') {
      ++at;
      result += text[at] == 'r' ? '\r' : text[at];
    } else {
      result += text[at];
    }
  }
  ++at;
  return result;
}

std::string stringAfter(std::string_view dictionary, std::string_view key) {
  const std::size_t found = dictionary.find(std::string(key) + "(");
  if (found == dictionary.npos) {
    return {};
  }
  std::size_t at = found + key.size();
  return takeString(dictionary, at);
}

// A matrix without rotation: scale and place.
struct Matrix {
  double a = 1;
  double d = 1;
  double x = 0;
  double y = 0;
};

// Follows the operators of a content stream (PDF 1.7, Annex A).
class ContentReader {
 public:
  ContentReader(const PdfObjects& objects, ShownPage& page) : objects_(objects), page_(page) {}

  void read(std::string_view content, const std::string& resources, const Matrix& matrix) {
    matrices_.assign(1, matrix);
    resources_ = resources;
    for (std::size_t at = 0; at < content.size();) {
      readToken(content, at);
    }
    EXPECT_EQ(matrices_.size(), 1u) << "q and Q are no pairs";
  }

 private:
  void readToken(std::string_view content, std::size_t& at) {
    const char c = content[at];
    if (std::isspace(static_cast<unsigned char>(c)) != 0 || c == '[' || c == ']') {
      ++at;
    } else if (c == '(') {
      string_ += takeString(content, at);
    } else if (c == '<') {
      at = content.find('>', at) + 1;
    } else {
      const std::size_t end = std::min(content.find_first_of(" \n[]()/<>", at + 1), content.size());
      word(std::string(content.substr(at, end - at)));
      at = end;
    }
  }

  void word(const std::string& word) {
    if (word[0] == '/') {
      name_ = word;
    } else if (std::isalpha(static_cast<unsigned char>(word[0])) == 0) {
      operands_.push_back(word);
    } else {
      perform(word);
      operands_.clear();
      string_.clear();
    }
  }

  double number(std::size_t i) const { return i < operands_.size() ? std::atof(operands_[i].c_str()) : 0; }

  void perform(const std::string& name) {
    Matrix& m = matrices_.back();
    if (name == "q") {
      matrices_.push_back(Matrix(m));
    } else if (name == "Q") {
      matrices_.pop_back();
    } else if (name == "cm") {
      m = {m.a * number(0), m.d * number(3), m.x + m.a * number(4), m.y + m.d * number(5)};
    } else if (name == "g" || name == "rg") {
      color_.clear();
      for (const std::string& operand : operands_) {
        color_ += (color_.empty() ? "" : " ") + operand;
      }
    } else if (name == "re") {
      areas_.push_back({m.x + m.a * number(0), m.y + m.d * number(1), m.a * number(2), m.d * number(3), color_});
    } else if (name == "f") {
      page_.areas.insert(page_.areas.end(), areas_.begin(), areas_.end());
      areas_.clear();
    } else if (name == "BT") {
      textX_ = textY_ = 0;
    } else if (name == "Tf") {
      font_ = name_;
      size_ = number(0);
    } else if (name == "Td") {
      textX_ += number(0);
      textY_ += number(1);
    } else if (name == "Tj" || name == "TJ") {
      page_.texts.push_back({string_, m.x + m.a * textX_, m.y + m.d * textY_, font_, size_ * m.d, color_});
    } else if (name == "Do") {
      draw(m);
    }
  }

  void draw(const Matrix& matrix) {
    const int object = numberAfter(resources_, name_ + " ");
    const std::string dictionary = objects_.object(object);
    if (dictionary.find("/Subtype/Form") == dictionary.npos) {
      page_.images.push_back({matrix.x, matrix.y, matrix.a, matrix.d});
      return;
    }
    ContentReader(objects_, page_).read(objects_.stream(object), dictionary, matrix);
  }

  const PdfObjects& objects_;
  ShownPage& page_;
  std::string resources_;
  std::vector<Matrix> matrices_;
  std::vector<ShownArea> areas_;
  std::vector<std::string> operands_;
  std::string name_;
  std::string string_;
  std::string font_;
  std::string color_ = "0";
  double size_ = 0;
  double textX_ = 0;
  double textY_ = 0;
};

}  // namespace

std::string ShownPage::all() const {
  std::string result;
  for (const ShownText& text : texts) {
    result += (result.empty() ? "" : " ") + text.text;
  }
  return result;
}

ShownText ShownPage::find(std::string_view part) const {
  for (const ShownText& text : texts) {
    if (text.text.find(part) != std::string::npos) {
      return text;
    }
  }
  ADD_FAILURE() << "no text with \"" << part << "\" on: " << all();
  return {};
}

std::vector<ShownText> ShownPage::lineOf(std::string_view part) const {
  const double y = find(part).y;
  std::vector<ShownText> line;
  for (const ShownText& text : texts) {
    if (std::abs(text.y - y) < 0.01) {
      line.push_back(text);
    }
  }
  std::stable_sort(line.begin(), line.end(), [](const ShownText& a, const ShownText& b) { return a.x < b.x; });
  return line;
}

std::vector<ShownArea> ShownPage::areasOf(std::string_view color) const {
  std::vector<ShownArea> result;
  std::copy_if(areas.begin(), areas.end(), std::back_inserter(result),
               [color](const ShownArea& area) { return area.color == color; });
  return result;
}

ShownPages::ShownPages(const std::string& file) : objects_(file) { addPages(numberAfter(catalog(), "/Pages ")); }

void ShownPages::addPages(int node) {
  const std::string object = objects_.object(node);
  if (object.find("/Type/Pages") == object.npos) {
    return addPage(node, object);
  }
  const std::size_t before = pages_.size();
  for (const int kid : referencesAfter(object, "/Kids")) {
    addPages(kid);
  }
  EXPECT_EQ(static_cast<std::size_t>(numberAfter(object, "/Count ")), pages_.size() - before);
}

void ShownPages::addPage(int number, const std::string& object) {
  ShownPage& page = pages_.emplace_back();
  page.object = number;
  page.box = numbersAfter(object, "/MediaBox");
  ContentReader(objects_, page).read(objects_.stream(numberAfter(object, "/Contents ")), object, {});
  addLinks(page, object);
}

void ShownPages::addLinks(ShownPage& page, const std::string& object) const {
  for (const int number : referencesAfter(object, "/Annots")) {
    const std::string link = objects_.object(number);
    const std::string address = stringAfter(link, "/URI");
    page.links.push_back({numbersAfter(link, "/Rect"), address.empty() ? "#" + stringAfter(link, "/Dest") : address});
  }
}

int ShownPages::pageOf(std::string_view part) const {
  const auto found =
      std::find_if(pages_.begin(), pages_.end(), [part](const ShownPage& page) { return page.has(part); });
  return found == pages_.end() ? -1 : static_cast<int>(found - pages_.begin());
}

std::string ShownPages::outline() const {
  std::string lines;
  const int root = numberAfter(catalog(), "/Outlines ");
  if (root > 0) {
    addEntries(numberAfter(objects_.object(root), "/First "), 0, lines);
  }
  return lines;
}

void ShownPages::addEntries(int first, std::size_t level, std::string& lines) const {
  int previous = -1;
  for (int entry = first; entry > 0;) {
    const std::string object = objects_.object(entry);
    EXPECT_EQ(numberAfter(object, "/Prev "), previous);
    const std::string place = destination(std::string_view(object).substr(object.find("/Dest")));
    lines.append(2 * level, ' ').append(stringAfter(object, "/Title"));
    lines.append(" @").append(place.substr(0, place.find(' '))).append("\n");
    addEntries(numberAfter(object, "/First "), level + 1, lines);
    previous = std::exchange(entry, numberAfter(object, "/Next "));
  }
}

// The page and height of the first destination in a text, such as "[7 0 R/XYZ null 700 null]".
std::string ShownPages::destination(std::string_view text) const {
  const int object = numberAfter(text, "[");
  for (std::size_t page = 0; page < pages_.size(); ++page) {
    if (pages_[page].object == object) {
      return std::to_string(page) + " " + std::to_string(numberAfter(text, "/XYZ null "));
    }
  }
  ADD_FAILURE() << "no page is object " << object;
  return {};
}

std::string ShownPages::place(std::string_view name) const {
  const std::string all = catalog();
  const std::size_t names = all.find("/Names<</Dests ");
  return names == all.npos ? std::string() : placeIn(numberAfter(all, "/Names<</Dests "), name);
}

std::string ShownPages::placeIn(int node, std::string_view name) const {
  const std::string object = objects_.object(node);
  const std::string entry = std::string("(").append(name).append(")[");
  if (const std::size_t names = object.find("/Names["); names != object.npos) {
    const std::size_t found = object.find(entry, names);
    return found == object.npos ? std::string() : destination(std::string_view(object).substr(found + name.size() + 2));
  }
  for (const int kid : referencesAfter(object, "/Kids")) {
    if (std::string found = placeIn(kid, name); !found.empty()) {
      return found;
    }
  }
  return {};
}

}  // namespace scrivalen::test
