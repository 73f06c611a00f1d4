#include "round_trip/read_outline.h"

#include "readers/markdown/markdown_reader.h"
#include "round_trip/outline.h"

#include <vector>

using namespace scrivalen::command;

namespace scrivalen::test {
namespace {

class OutlineSink : public DocumentSink {
 public:
  void beginHeading(int level, const std::string&) override {
    beginText("heading " + std::to_string(level) + " ", true);
  }
  void beginParagraph() override { beginText("text "); }
  void beginQuote() override { begin("quote"); }
  void beginList(bool ordered, int first, bool tight) override {
    begin((ordered ? "list " + std::to_string(first) : std::string("list")) + (tight ? " tight" : " loose"));
  }
  void beginItem(Task task) override {
    constexpr const char* kTasks[] = {"item", "item open", "item done"};
    begin(kTasks[static_cast<int>(task)]);
  }
  void beginCode(const std::string& language) override {
    endText();
    parts_.push_back(Part::Code);
    code_ = "code " + language + ":";
  }
  void beginTable() override { begin("table"); }
  void beginRow(bool header) override { begin(header ? "header" : "row"); }
  void beginCell(Align align) override {
    constexpr const char* kAligns[] = {"cell ", "cell ", "cell center ", "cell right "};
    beginText(kAligns[static_cast<int>(align)], true);
  }
  void beginSpan(Span span) override;
  void beginLink(const std::string& address, const std::string& title) override;
  void end() override;

  void text(std::string_view text) override;
  void cell(std::string_view) override { add("unexpected"); }
  void rule() override {
    endText();
    outline_.add("rule");
  }
  void image(const std::string& address, const std::string& alternative) override {
    add("<" + alternative + "|" + address.substr(0, 12) + ">");
  }
  void markup(std::string_view) override { add("unexpected"); }

  std::string lines() const { return outline_.lines(); }

 private:
  enum class Part { Block, Text, Code, Span };

  void beginText(const std::string& name, bool mayBeEmpty = false);
  void endText();
  void begin(const std::string& name);
  void add(const std::string& text);

  Outline outline_;
  std::vector<Part> parts_;
  std::vector<Outline::Style> styles_{Outline::Style()};  // of the spans that are open
  std::string code_;
  bool isInText_ = false;  // also in the text of a tight item
};

void OutlineSink::beginText(const std::string& name, bool mayBeEmpty) {
  endText();
  outline_.beginText(name, mayBeEmpty);
  isInText_ = true;
  parts_.push_back(Part::Text);
}

void OutlineSink::endText() {
  if (isInText_) {
    outline_.endText();
    isInText_ = false;
  }
}

void OutlineSink::begin(const std::string& name) {
  endText();
  outline_.beginBlock(name);
  parts_.push_back(Part::Block);
}

void OutlineSink::add(const std::string& text) {
  if (!isInText_) {
    outline_.beginText("text ", false);
    isInText_ = true;
  }
  outline_.text(text, styles_.back());
}

void OutlineSink::beginSpan(Span span) {
  Outline::Style& style = styles_.emplace_back(styles_.back());
  switch (span) {
    case Span::Strong: style.strong = true; break;
    case Span::Emphasis: style.emphasis = true; break;
    case Span::Deleted: style.deleted = true; break;
    case Span::Code: style.code = true; break;
  }
  parts_.push_back(Part::Span);
}

void OutlineSink::beginLink(const std::string& address, const std::string& title) {
  styles_.emplace_back(styles_.back()).link = "@" + address + "'" + title + "'";
  parts_.push_back(Part::Span);
}

void OutlineSink::end() {
  const Part part = parts_.back();
  parts_.pop_back();
  switch (part) {
    case Part::Span: return styles_.pop_back();
    case Part::Text: return endText();
    case Part::Code: return outline_.add(code_);
    case Part::Block: endText(); return outline_.endBlock();
  }
}

void OutlineSink::text(std::string_view text) {
  if (!parts_.empty() && parts_.back() == Part::Code) {
    code_ += text;
  } else {
    add(std::string(text));
  }
}

}  // namespace

std::string outlineOfMarkdown(std::string_view markdown) {
  OutlineSink sink;
  readMarkdown(markdown, Safety::Safe, sink);
  return sink.lines();
}

}  // namespace scrivalen::test
