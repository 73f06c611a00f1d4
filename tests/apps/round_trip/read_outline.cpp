#include "round_trip/read_outline.h"

#include "events/document.h"
#include "readers/markdown_reader.h"
#include "round_trip/outline.h"
#include "text/utf.h"

using namespace scrivalen::command;

namespace scrivalen::test {
namespace {

class OutlineSink : public EventSink {
 public:
  void write(const Event& event) override;
  std::string lines() const { return outline_.lines(); }

 private:
  void beginText(const std::string& name, bool mayBeEmpty = false) {
    endText();
    outline_.beginText(name, mayBeEmpty);
    isInText_ = true;
  }
  void endText() {
    if (isInText_) {
      outline_.endText();
      isInText_ = false;
    }
  }
  void begin(const std::string& name) {
    endText();
    outline_.beginBlock(name);
  }
  void end() {
    endText();
    outline_.endBlock();
  }
  void inlineEvent(const Event& event);

  Outline outline_;
  Outline::Style style_;
  bool isInText_ = false;
  std::string code_;
  bool isInCode_ = false;
};

std::string listName(const Event& event) {
  return (event.ordered ? "list " + std::to_string(event.number) : std::string("list")) +
         (event.tight ? " tight" : " loose");
}

void OutlineSink::write(const Event& event) {
  constexpr const char* kTasks[] = {"item", "item open", "item done"};
  constexpr const char* kAligns[] = {"cell ", "cell ", "cell center ", "cell right "};
  switch (event.kind) {
    case EventKind::BeginHeading: return beginText("heading " + std::to_string(event.number) + " ", true);
    case EventKind::BeginParagraph: return beginText("text ");
    case EventKind::EndHeading:
    case EventKind::EndParagraph:
    case EventKind::EndCell: return endText();
    case EventKind::BeginQuote: return begin("quote");
    case EventKind::BeginList: return begin(listName(event));
    case EventKind::BeginItem: return begin(kTasks[static_cast<int>(event.task)]);
    case EventKind::BeginTable: return begin("table");
    case EventKind::BeginRow: return begin(event.header ? "header" : "row");
    case EventKind::EndQuote:
    case EventKind::EndList:
    case EventKind::EndItem:
    case EventKind::EndTable:
    case EventKind::EndRow: return end();
    case EventKind::BeginCell: return beginText(kAligns[static_cast<int>(event.align)], true);
    case EventKind::BeginCodeBlock:
      endText();
      isInCode_ = true;
      code_ = "code " + toUtf8(event.text) + ":";
      return;
    case EventKind::EndCodeBlock: isInCode_ = false; return outline_.add(code_);
    case EventKind::Rule: endText(); return outline_.add("rule");
    default: return inlineEvent(event);
  }
}

void OutlineSink::inlineEvent(const Event& event) {
  if (isInCode_) {
    code_ += toUtf8(event.text);
    return;
  }
  if (!isInText_) {
    beginText("text ");
  }
  switch (event.kind) {
    case EventKind::Text: return outline_.text(toUtf8(event.text), style_);
    case EventKind::LineBreak: return outline_.text("\n", style_);
    case EventKind::Image:
      return outline_.text("<" + toUtf8(event.text) + "|" + toUtf8(event.address).substr(0, 12) + ">", style_);
    case EventKind::BeginLink: style_.link = "@" + toUtf8(event.address) + "'" + toUtf8(event.title) + "'"; return;
    case EventKind::EndLink: style_.link.clear(); return;
    case EventKind::BeginStrong:
    case EventKind::EndStrong: style_.strong = event.kind == EventKind::BeginStrong; return;
    case EventKind::BeginEmphasis:
    case EventKind::EndEmphasis: style_.emphasis = event.kind == EventKind::BeginEmphasis; return;
    case EventKind::BeginDeleted:
    case EventKind::EndDeleted: style_.deleted = event.kind == EventKind::BeginDeleted; return;
    case EventKind::BeginCode:
    case EventKind::EndCode: style_.code = event.kind == EventKind::BeginCode; return;
    default: return outline_.text("unexpected", style_);
  }
}

}  // namespace

std::string outlineOfMarkdown(std::string_view markdown) {
  OutlineSink sink;
  readMarkdown(markdown, Safety::Safe, sink);
  return sink.lines();
}

}  // namespace scrivalen::test
