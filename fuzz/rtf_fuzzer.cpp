#include "formats/rtf/rtf_report.h"
#include "input.h"
#include "report_calls.h"
#include "scrivalen/host.h"
#include "scrivalen/rtf_doc.h"

#include <cstdlib>
#include <cwchar>

using scrivalen::fuzz::Input;

namespace {

// Discards the bytes but counts the open groups.
struct Sink : OutputFile {
  void Write(const void* data, std::size_t size) override {
    for (std::size_t i = 0; i < size; ++i) {
      take(static_cast<const char*>(data)[i]);
    }
  }

  void take(char c) {
    if (isEscaped) {
      isEscaped = false;
    } else if (c == '\\') {
      isEscaped = true;
    } else if (c == '{') {
      ++depth;
    } else if (c == '}') {
      --depth;
    }
  }

  int depth = 0;
  bool isEscaped = false;
};

// In a conforming document no text may open or close a group.
template <typename Call>
void callBalanced(const Sink& sink, bool conforming, Call call) {
  const int depth = sink.depth;
  const bool wasEscaped = sink.isEscaped;  // by a classic text that ended in a backslash
  call();
  if (conforming && !wasEscaped && (sink.depth != depth || sink.isEscaped)) {
    std::abort();
  }
}

// At most the text's length, or a negative number.
int partOf(const wchar_t* text, Input& input) {
  const int length = text ? static_cast<int>(std::wcslen(text)) : 0;
  return input.number() % (length + 1);
}

void callDocument(RTFdoc& doc, Sink& sink, bool& conforming, bool& conformingNext, Input& input) {
  const auto type = [&] { return static_cast<RTFdoc::ParType>(input.number()); };
  const auto position = [&] { return static_cast<RTFdoc::ITEM_TYPE>(input.number()); };
  const auto character = [&] { return static_cast<char>(input.byte()); };
  switch (input.byte() % 48) {
    case 0: {
      conforming = conformingNext;
      const bool hasFile = input.byte() % 8 != 0;
      const wchar_t* const title = input.text();
      doc.BegDoc(hasFile ? &sink : nullptr, title, input.number());
      break;
    }
    case 1: doc.EndDoc(); break;
    case 2: {
      const int number = input.number();
      const wchar_t* const name = input.text();
      callBalanced(sink, conforming, [&] { doc.AddFont(number, name, position()); });
      break;
    }
    case 3: {
      const wchar_t* const name = input.text();
      const wchar_t* const extra = input.text();
      doc.AddStyle(input.number(), name, nullptr, input.number(), input.byte() & 1, extra, position());
      break;
    }
    case 4: doc.Char(character()); break;
    case 5: doc.SpecChar(static_cast<wchar_t>(input.number() & 0xFFFF)); break;
    case 6: {
      const wchar_t* const text = input.text();
      const int length = partOf(text, input);
      callBalanced(sink, conforming, [&] { doc.write(text, length); });
      break;
    }
    case 7: doc.BoldOn(); break;
    case 8: doc.BoldOff(); break;
    case 9: doc.ItalicOn(); break;
    case 10: doc.ItalicOff(); break;
    case 11: doc.StrikeOn(); break;
    case 12: doc.StrikeOff(); break;
    case 13: doc.OutlineOn(); break;
    case 14: doc.OutlineOff(); break;
    case 15: doc.ShadowOn(); break;
    case 16: doc.ShadowOff(); break;
    case 17: doc.SmallOn(); break;
    case 18: doc.SmallOff(); break;
    case 19: doc.CapsOn(); break;
    case 20: doc.CapsOff(); break;
    case 21: doc.FontSize(character()); break;
    case 22: doc.UnderLineOn(character()); break;
    case 23: doc.UnderLineOff(character()); break;
    case 24: doc.ScriptOn(character()); break;
    case 25: doc.ScriptOff(); break;
    case 26: doc.FontColorOn(input.number()); break;
    case 27: doc.FontColorOff(); break;
    case 28: doc.BackgroundColorOn(input.number()); break;
    case 29: doc.BackgroundColorOff(); break;
    case 30: doc.FontNo(input.number()); break;
    case 31: doc.Style(input.number()); break;
    case 32: doc.NextParJ(type()); break;
    case 33: doc.Paragraf(type(), input.number()); break;
    case 34: doc.Numbers(input.byte() & 1); break;
    case 35: {
      const wchar_t* const text = input.text();
      const wchar_t* const bookmark = input.text();
      callBalanced(sink, conforming, [&] { doc.HyperLink(text, bookmark); });
      break;
    }
    case 36: {
      const wchar_t* const name = input.text();
      callBalanced(sink, conforming, [&] { doc.BookMark(name); });
      break;
    }
    case 37: doc.BeginField(); break;
    case 38: doc.MiddleField(); break;
    case 39: doc.EndField(); break;
    case 40: doc.BeginTable(); break;
    case 41: doc.BeginRow(input.number() % 300, input.number()); break;
    case 42: doc.BeginCell(); break;
    case 43: doc.EndCell(); break;
    case 44: doc.EndRow(); break;
    case 45: doc.Char(static_cast<wchar_t>(input.number() & 0xFFFF)); break;
    case 46: doc.writeT(input.text(), 0); break;
    default:
      conformingNext = (input.byte() & 1) != 0;
      doc.SetConforming(conformingNext ? 1 : 0);
      break;
  }
}

void runDocument(Input& input) {
  Sink sink;
  RTFdoc doc;
  bool conforming = (input.byte() & 1) != 0;
  bool conformingNext = conforming;
  doc.SetConforming(conforming ? 1 : 0);
  const wchar_t* const title = input.text();
  doc.BegDoc(&sink, title, input.byte() & 1);
  while (!input.empty()) {
    callDocument(doc, sink, conforming, conformingNext, input);
  }
  doc.EndDoc();
}

void runReport(Input& input) {
  RTFReport report;
  report.SetReportOption(OPTION_CONFORMING, input.byte() & 1);
  report.Open(L"/dev/null");
  while (!input.empty()) {
    scrivalen::fuzz::callReport(report, input);
  }
  if (report.Close() != REPORT_OK) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  scrivalen::SetLogHandler([](const wchar_t*) {});
  Input input(data, size);
  if (input.byte() & 1) {
    runReport(input);
  } else {
    runDocument(input);
  }
  return 0;
}
