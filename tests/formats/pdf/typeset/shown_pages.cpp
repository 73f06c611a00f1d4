#include "formats/pdf/typeset/shown_pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace scrivalen::test {

std::string ShownPage::all() const {
  std::string result;
  for (const PdfText& text : texts()) {
    result.append(result.empty() ? "" : " ").append(text.text);
  }
  return result;
}

PdfText ShownPage::find(std::string_view part) const {
  for (const PdfText& text : texts()) {
    if (text.text.find(part) != std::string::npos) {
      return text;
    }
  }
  ADD_FAILURE() << "no text with \"" << part << "\" on: " << all();
  return {};
}

std::vector<PdfText> ShownPage::lineOf(std::string_view part) const {
  const double y = find(part).y;
  std::vector<PdfText> line;
  std::copy_if(texts().begin(), texts().end(), std::back_inserter(line),
               [y](const PdfText& text) { return std::abs(text.y - y) < 0.01; });
  std::stable_sort(line.begin(), line.end(), [](const PdfText& a, const PdfText& b) { return a.x < b.x; });
  return line;
}

std::vector<PdfArea> ShownPage::areasOf(std::uint32_t color) const {
  std::vector<PdfArea> result;
  std::copy_if(areas().begin(), areas().end(), std::back_inserter(result),
               [color](const PdfArea& area) { return area.color == color; });
  return result;
}

ShownPages::ShownPages(const std::string& file) : objects_(file), file_(file) {
  EXPECT_EQ(file_.problems(), std::vector<std::string>());
  for (const PdfPage& page : file_.pages()) {
    pages_.push_back({page});
  }
}

std::string ShownPages::pageObject(std::size_t page) const {
  std::size_t count = 0;
  for (std::size_t i = 1; i < objects_.size(); ++i) {
    const std::string object = objects_.object(static_cast<int>(i));
    if (object.find("/Type/Page/") != object.npos && count++ == page) {
      return object;
    }
  }
  return {};
}

int ShownPages::pageOf(std::string_view part) const {
  const auto found =
      std::find_if(pages_.begin(), pages_.end(), [part](const ShownPage& page) { return page.has(part); });
  return found == pages_.end() ? -1 : static_cast<int>(found - pages_.begin());
}

std::string ShownPages::outline() const {
  std::string lines;
  for (const PdfOutlineEntry& entry : file_.outline()) {
    lines.append(2 * static_cast<std::size_t>(entry.depth), ' ').append(entry.title);
    lines.append(" @").append(std::to_string(entry.place.page)).append("\n");
  }
  return lines;
}

std::string ShownPages::place(std::string_view name) const {
  const auto found = file_.places().find(std::string(name));
  if (found == file_.places().end()) {
    return {};
  }
  return std::to_string(found->second.page).append(" ").append(std::to_string(std::lround(found->second.top)));
}

}  // namespace scrivalen::test
