#include "formats/pdf/typeset/drawn_pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <sstream>

namespace scrivalen::test {
namespace {

constexpr double kPointsPerUnit = 0.1;

DrawnPage drawnPage(const PdfPage& page) {
  DrawnPage drawn{page.width, page.height, {}, {}, page.links};
  for (const PdfText& text : page.content.texts) {
    drawn.texts.push_back({text.x, page.height - text.y, text.font, text.size, text.color, text.text});
  }
  for (const PdfArea& area : page.content.areas) {
    drawn.areas.push_back({area.x, page.height - area.y - area.height, area.width, area.height, area.color});
  }
  return drawn;
}

}  // namespace

std::vector<DrawnPage> drawnPages(const std::string& file) {
  const PdfPages read(file);
  EXPECT_EQ(read.problems(), std::vector<std::string>());
  std::vector<DrawnPage> pages;
  std::transform(read.pages().begin(), read.pages().end(), std::back_inserter(pages), drawnPage);
  return pages;
}

std::string linesOf(const DrawnPage& page) {
  std::vector<DrawnText> texts = page.texts;
  const auto line = [](const DrawnText& text) { return std::lround(text.baseline / kPointsPerUnit); };
  std::stable_sort(texts.begin(), texts.end(), [&](const DrawnText& a, const DrawnText& b) {
    return line(a) != line(b) ? line(a) < line(b) : a.x < b.x;
  });
  std::string lines;
  const DrawnText* before = nullptr;
  for (const DrawnText& text : texts) {
    const bool isSameLine = before != nullptr && line(text) == line(*before);
    lines += before == nullptr ? "" : isSameLine ? " | " : "\n";
    lines += text.text;
    before = &text;
  }
  return lines;
}

std::string linesOf(const std::vector<DrawnPage>& pages) {
  std::ostringstream lines;
  for (const DrawnPage& page : pages) {
    lines << "--- " << std::lround(page.width) << 'x' << std::lround(page.height) << '\n' << linesOf(page) << '\n';
  }
  return lines.str();
}

DrawnText textOn(const DrawnPage& page, const std::string& begin) {
  for (const DrawnText& text : page.texts) {
    if (text.text.starts_with(begin)) {
      return text;
    }
  }
  ADD_FAILURE() << "no text " << begin << " on the page";
  return {};
}

}  // namespace scrivalen::test
