#include "formats/recorded_report.h"
#include "support/captured_log.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace scrivalen::test;

namespace {

/// Operations in any order, with texts of which each is another.
class AnyOrder {
 public:
  explicit AnyOrder(unsigned seed) : random_(seed) {}

  void play(AReport& report, int calls) {
    for (int i = 0; i < calls; ++i) {
      call(report);
    }
  }
  const std::vector<std::string>& texts() const { return texts_; }

 private:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  std::wstring next() {
    const std::string text = "<" + std::to_string(texts_.size()) + ">";
    texts_.push_back(text);
    return std::wstring(text.begin(), text.end());
  }
  const wchar_t* attributes() {
    constexpr const wchar_t* kAttributes[] = {nullptr, L"", L" style=\"color:red\"", L" colspan=\"2\"", L"red;blue"};
    return kAttributes[below(5)];
  }

  void call(AReport& report);

  std::mt19937 random_;
  std::vector<std::string> texts_;
};

void AnyOrder::call(AReport& report) {
  const auto type = static_cast<PARAGRAPH_TYPE>(below(8));
  const auto style = static_cast<REPORT_STYLE>(below(3));
  const wchar_t* const look = attributes();
  switch (below(28)) {
    case 0:
    case 1:
    case 2: return report.Text(next().c_str(), PARAGRAPH_NONE, look, 0);
    case 3:
    case 4: return report.Text(next().c_str(), type, look, 0);
    case 5: return report.BeginParagraph(type, look);
    case 6: return report.EndParagraph(type);
    case 7: return report.BeginTable(L"t", look);
    case 8: return report.EndTable(L"t");
    case 9:
    case 10: return report.BeginRow(L"row", look, 2);
    case 11: return report.EndRow(L"row");
    case 12:
    case 13: return report.BeginCell(L"c", below(2), look);
    case 14: return report.EndCell(L"c", 0);
    case 15:
    case 16: return report.Cell(next().c_str(), below(2), look);
    case 17: return report.Link(next().c_str(), L"#a");
    case 18: return report.BeginStyle(style, below(30));
    case 19: return report.EndStyle(style, 0);
    case 20: return report.EndOfLine();
    case 21: return report.Space();
    case 22: return report.Ancor(L"a");
    case 23: report.BeginToc(); return report.TocItem(L"a", next().c_str(), below(9) - 1);
    case 24: return report.EndToc();
    case 25: return report.SetCellColor(L"red;blue");
    case 26: report.BeginSubDocument(L"", L"file", next().c_str()); return;
    default: return report.EndSubDocument();
  }
}

// The texts in angle brackets that the events have, each once. A cell's text comes before its content, a heading's
// before its parts.
std::vector<std::string> textsOf(const std::string& events) {
  std::vector<std::string> texts;
  for (std::size_t at = events.find('<'); at != events.npos; at = events.find('<', at + 1)) {
    const std::string text = events.substr(at, events.find('>', at) + 1 - at);
    if (std::find(texts.begin(), texts.end(), text) == texts.end()) {
      texts.push_back(text);
    }
  }
  return texts;
}

class DocumentReportCalls : public testing::TestWithParam<unsigned> {};

}  // namespace

TEST_P(DocumentReportCalls, InAnyOrderLoseNoText) {
  const CapturedLog log;
  AnyOrder calls(GetParam());
  const std::string events = recorded([&calls](AReport& report) { calls.play(report, 300); });
  EXPECT_EQ(textsOf(events), calls.texts()) << events;
}

INSTANTIATE_TEST_SUITE_P(OfManySeeds, DocumentReportCalls, testing::Range(1u, 101u));
