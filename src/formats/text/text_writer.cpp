#include "formats/text/text_writer.h"

#include "formats/text/text_encoding.h"
#include "formats/text/text_lines.h"
#include "formats/text/text_links.h"
#include "formats/text/text_table.h"
#include "text/columns/line_breaks.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::text {
namespace {

using document::Align;
using document::Event;
using document::EventKind;
using document::FormatSettings;
using document::Task;
using document::WarningCode;

// The text of a paragraph that is held. Then its complete lines are written.
constexpr std::size_t kMostBytesHeld = 65536;
constexpr std::size_t kIndentOfCode = 4;
constexpr std::size_t kIndentOfLevel = 2;
constexpr int kUnderlinedLevels = 2;

// The way to an output that is not UTF-8.
struct EncodedOutput {
  EncodedOutput(OutputBuffer& out, EncodingSink::Encoding encoding) : sink(out, encoding), buffer(sink) {}

  EncodingSink sink;
  OutputBuffer buffer;
};

std::unique_ptr<EncodedOutput> encodedOutput(const document::WriterContext& context) {
  const std::string_view encoding = context.settings.text("encoding");
  if (encoding == "utf-16") {
    return std::make_unique<EncodedOutput>(context.out, EncodingSink::Encoding::Utf16);
  }
  if (encoding == "latin-1") {
    return std::make_unique<EncodedOutput>(context.out, EncodingSink::Encoding::Latin1);
  }
  return nullptr;
}

std::string_view withoutAtEnd(std::string_view text, std::string_view characters) {
  return text.substr(0, text.find_last_not_of(characters) + 1);
}

class TextWriter final : public document::DocumentWriter {
 public:
  explicit TextWriter(const document::WriterContext& context)
      : encoded_(encodedOutput(context)),
        isUtf16_(context.settings.text("encoding") == "utf-16"),
        out_(encoded_ ? encoded_->buffer : context.out),
        warnings_(context.warnings),
        lines_(out_, static_cast<std::size_t>(context.settings.number("width"))),
        table_(out_, lines_, context.settings.text("widths") == "equal", context.settings.text("separator")) {}

  void begin() override;
  void write(const Event& event) override;
  void beginTable(const document::Table& table) override;
  void row(const document::Row& row) override;
  void endTable() override;
  void finish() override;

 private:
  enum class Mode : std::uint8_t { None, Paragraph, Heading, Code };
  struct Container {
    EventKind kind;
    bool tight = false;
    bool ordered = false;
    std::int64_t number = 0;
  };
  struct OpenLink {
    std::string address;
    std::size_t begin;  // of its text
    bool isPartWritten;
  };

  void writeBlock(const Event& event);
  void writeInline(const Event& event);

  bool isInTightItem() const;
  void startBlock(bool isSeparated = true);
  void startText(Mode mode);
  void endText();
  void append(std::string_view text);
  void writeHeldLines();
  std::size_t indentOf(std::size_t columns) const;
  void writeAligned(const Line& line);
  void writeParagraph();
  void writeHeading(std::string_view text, int level);
  void writeCode(std::string_view text);
  void writeRule();
  void writeTitle(std::string_view text);
  void beginQuote();
  void beginList(const Event& event);
  void beginItem(const Event& event);
  void endContainer();
  void writeContentsItem(const Event& event);
  void endLink();

  std::unique_ptr<EncodedOutput> encoded_;  // null: UTF-8
  bool isUtf16_;
  OutputBuffer& out_;
  document::OutputWarnings& warnings_;
  TextLines lines_;
  TextTable table_;
  TableLinks tableLinks_;
  std::vector<Container> containers_;

  Mode mode_ = Mode::None;
  std::string text_;  // of the paragraph or heading that is open
  Align align_ = Align::Auto;
  int level_ = 0;
  std::optional<OpenLink> link_;
  std::optional<int> firstContentsLevel_;
  bool isBreakDue_ = false;
};

void TextWriter::begin() {
  if (isUtf16_) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    out_.write(kByteOrderMark.data(), kByteOrderMark.size());
  }
}

void TextWriter::finish() {
  endText();
  if (!encoded_) {
    return;
  }
  encoded_->buffer.flush();
  if (encoded_->sink.replaced() > 0) {
    warnings_.add(WarningCode::CharactersReplaced, "characters that Latin-1 does not have, replaced by '?'",
                  encoded_->sink.replaced());
  }
}

void TextWriter::write(const Event& event) {
  if (document::isInline(event.kind)) {
    writeInline(event);
  } else {
    endText();
    writeBlock(event);
  }
}

void TextWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::Title: writeTitle(event.text); break;
    case EventKind::BeginSection:
    case EventKind::PageBreak: isBreakDue_ = true; break;
    case EventKind::BeginHeading:
      level_ = event.number;
      align_ = event.align;
      startText(Mode::Heading);
      break;
    case EventKind::BeginParagraph:
      align_ = event.align;
      startText(Mode::Paragraph);
      break;
    case EventKind::BeginCode: startText(Mode::Code); break;
    case EventKind::BeginQuote: beginQuote(); break;
    case EventKind::BeginList: beginList(event); break;
    case EventKind::BeginItem: beginItem(event); break;
    case EventKind::EndQuote:
    case EventKind::EndList:
    case EventKind::EndItem: endContainer(); break;
    case EventKind::Rule:
      startBlock();
      writeRule();
      break;
    case EventKind::BeginContents:
      startBlock();
      firstContentsLevel_.reset();
      break;
    case EventKind::ContentsItem: writeContentsItem(event); break;
    default: break;
  }
}

void TextWriter::writeInline(const Event& event) {
  switch (event.kind) {
    case EventKind::Text:
    case EventKind::Image: append(event.text); break;
    case EventKind::BeginLink: link_ = OpenLink{std::string(event.address), text_.size(), false}; break;
    case EventKind::EndLink: endLink(); break;
    default: break;
  }
}

bool TextWriter::isInTightItem() const {
  return !containers_.empty() && containers_.back().kind == EventKind::BeginItem && containers_.back().tight;
}

void TextWriter::startBlock(bool isSeparated) {
  if (isBreakDue_) {
    isBreakDue_ = false;
    if (lines_.hasLines()) {
      lines_.beginBlock(true);
      writeRule();
    }
  }
  lines_.beginBlock(isSeparated);
}

void TextWriter::startText(Mode mode) {
  startBlock();
  mode_ = mode;
  text_.clear();
}

void TextWriter::endText() {
  switch (mode_) {
    case Mode::Paragraph: writeParagraph(); break;
    case Mode::Heading: writeHeading(text_, level_); break;
    case Mode::Code: lines_.endPart(); break;
    case Mode::None: break;
  }
  mode_ = Mode::None;
  text_.clear();
}

// Text that is directly in an item is a paragraph.
void TextWriter::append(std::string_view text) {
  if (mode_ == Mode::None) {
    align_ = Align::Auto;
    startText(Mode::Paragraph);
  }
  if (mode_ == Mode::Code) {
    return writeCode(text);
  }
  text_ += text;
  if (text_.size() > kMostBytesHeld && mode_ == Mode::Paragraph) {
    writeHeldLines();
  }
}

// Writes the lines of a paragraph but the last, which goes on; or a part of it, if it is too long to be held.
void TextWriter::writeHeldLines() {
  LineReader reader(text_, lines_.columns());
  const char* rest = reader.position();
  Line line;
  while (reader.next(line) && !reader.isAtEnd()) {
    writeAligned(line);
    rest = reader.position();
  }
  std::size_t written = static_cast<std::size_t>(rest - text_.data());
  if (written == 0) {
    const std::string_view part = withoutAtEnd(text_, " \n");
    written = part.empty() ? text_.size() : part.size();
    lines_.writePart(part);
  }
  text_.erase(0, written);
  if (link_) {
    link_->isPartWritten = true;
  }
}

std::size_t TextWriter::indentOf(std::size_t columns) const {
  const std::size_t blanks = lines_.columns() > columns ? lines_.columns() - columns : 0;
  switch (align_) {
    case Align::Center: return blanks / 2;
    case Align::Right: return blanks;
    default: return 0;
  }
}

void TextWriter::writeAligned(const Line& line) { lines_.write(line.text, indentOf(line.columns)); }

void TextWriter::writeParagraph() {
  if (text_.empty()) {
    lines_.endPart();
    return;
  }
  LineReader reader(text_, lines_.columns());
  Line line;
  while (reader.next(line)) {
    writeAligned(line);
  }
}

void TextWriter::writeHeading(std::string_view text, int level) {
  if (text.empty()) {
    return;
  }
  LineReader reader(text, lines_.columns());
  Line line;
  std::size_t longest = 0;
  while (reader.next(line)) {
    writeAligned(line);
    longest = std::max(longest, line.columns);
  }
  if (level <= kUnderlinedLevels) {
    lines_.write(std::string(longest, level < kUnderlinedLevels ? '=' : '-'), indentOf(longest));
  }
}

// Code is not wrapped, so nothing of it is held: its last line stays open until its line end, or the end of the code.
void TextWriter::writeCode(std::string_view text) {
  for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
    lines_.write(text.substr(0, end), kIndentOfCode);
    text.remove_prefix(end + 1);
  }
  if (!text.empty()) {
    lines_.writePart(text, kIndentOfCode);
  }
}

void TextWriter::writeRule() { lines_.write(std::string(lines_.columns(), '-')); }

void TextWriter::writeTitle(std::string_view text) {
  startBlock();
  align_ = Align::Auto;
  writeHeading(text, 1);
}

void TextWriter::beginQuote() {
  startBlock();
  containers_.push_back({EventKind::BeginQuote});
  lines_.open("> ", "> ");
}

// A list in an item whose lines are not separated is not separated either.
void TextWriter::beginList(const Event& event) {
  startBlock(!isInTightItem());
  containers_.push_back({EventKind::BeginList, event.tight, event.ordered, event.number});
  lines_.open({}, {});
}

void TextWriter::beginItem(const Event& event) {
  Container& list = containers_.back();
  const bool tight = list.tight;
  std::string marker = list.ordered ? std::to_string(list.number++) + ". " : "- ";
  if (event.task != Task::None) {
    marker += event.task == Task::Done ? "[x] " : "[ ] ";
  }
  startBlock(!tight);
  containers_.push_back({EventKind::BeginItem, tight});
  lines_.open(marker, std::string(marker.size(), ' '));
}

void TextWriter::endContainer() {
  if (containers_.back().kind == EventKind::BeginItem && !lines_.hasLines()) {
    lines_.write({});  // its marker
  }
  containers_.pop_back();
  lines_.close();
}

void TextWriter::writeContentsItem(const Event& event) {
  if (!firstContentsLevel_) {
    firstContentsLevel_ = event.number;
  }
  const auto depth = static_cast<std::size_t>(std::max(event.number - *firstContentsLevel_, 0));
  lines_.open(std::string(depth * kIndentOfLevel, ' '), std::string((depth + 1) * kIndentOfLevel, ' '));
  text_ = event.text;
  align_ = Align::Auto;
  writeParagraph();
  text_.clear();
  lines_.close();
}

void TextWriter::endLink() {
  const std::string_view text = link_->isPartWritten ? "" : std::string_view(text_).substr(link_->begin);
  if (needsAddress(text, link_->address)) {
    const bool isAlone = text.empty() && !link_->isPartWritten;
    append(isAlone ? link_->address : " (" + link_->address + ")");
  }
  link_.reset();
}

void TextWriter::beginTable(const document::Table& table) {
  endText();
  startBlock();
  table_.begin(table);
  tableLinks_.clear();
}

void TextWriter::row(const document::Row& row) {
  table_.row(row);
  for (const document::Cell& cell : row.cells) {
    if (cell.content != nullptr) {
      tableLinks_.add(cell);
    }
  }
}

void TextWriter::endTable() {
  table_.end();
  if (tableLinks_.lines().empty()) {
    return;
  }
  startBlock();
  align_ = Align::Auto;
  for (const std::string& line : tableLinks_.lines()) {
    text_ = line;
    writeParagraph();
  }
  text_.clear();
  if (tableLinks_.leftOut() > 0) {
    warnings_.add(WarningCode::SomethingLeftOut, "addresses of links in a long table, left out", tableLinks_.leftOut());
  }
}

}  // namespace

std::unique_ptr<document::DocumentWriter> createTextWriter(const document::WriterContext& context) {
  return std::make_unique<TextWriter>(context);
}

}  // namespace scrivalen::text
