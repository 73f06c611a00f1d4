#include "recorded_events.h"

#include "texts.h"

namespace scrivalen::command::test {
namespace {

// In the order of EventKind.
constexpr const char* kNames[] = {
    "BeginHeading", "EndHeading", "BeginParagraph", "EndParagraph",   "BeginQuote",   "EndQuote",  "BeginList",
    "EndList",      "BeginItem",  "EndItem",        "BeginCodeBlock", "EndCodeBlock", "Rule",      "MarkupBlock",
    "BeginTable",   "EndTable",   "BeginRow",       "EndRow",         "BeginCell",    "EndCell",   "Text",
    "LineBreak",    "Markup",     "BeginEmphasis",  "EndEmphasis",    "BeginStrong",  "EndStrong", "BeginDeleted",
    "EndDeleted",   "BeginCode",  "EndCode",        "BeginLink",      "EndLink",      "Image",     "BeginContents",
    "ContentsItem", "EndContents"};

constexpr const char* kAligns[] = {"", " left", " center", " right"};
constexpr const char* kTasks[] = {"", " open", " done"};

std::string quoted(std::wstring_view text) {
  return std::string(" '").append(replacedAll<char>(toUtf8(text), "\n", "\\n")).append("'");
}

}  // namespace

void RecordedEvents::write(const Event& event) {
  std::string line = kNames[static_cast<int>(event.kind)];
  line += event.header ? " header" : "";
  line += event.ordered ? " ordered" : "";
  line += event.tight ? " tight" : "";
  line += kAligns[static_cast<int>(event.align)];
  line += kTasks[static_cast<int>(event.task)];
  if (event.number != 0) {
    line.append(" ").append(std::to_string(event.number));
  }
  if (!event.text.empty()) {
    line.append(quoted(event.text));
  }
  if (!event.address.empty()) {
    line.append(" @").append(toUtf8(event.address));
  }
  if (!event.title.empty()) {
    line.append(" title").append(quoted(event.title));
  }
  for (const std::wstring_view text : {event.text, event.address, event.title}) {
    line += text.data()[text.size()] == L'\0' ? "" : " (without its NUL)";
  }
  lines_.push_back(line);
}

}  // namespace scrivalen::command::test
