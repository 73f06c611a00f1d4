#include "formats/text/text_writer.h"

#include "formats/text/text_encoding.h"
#include "formats/text/text_flow.h"
#include "formats/text/text_lines.h"
#include "formats/text/text_links.h"
#include "formats/text/text_table.h"

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

constexpr std::size_t kIndentOfLevel = 2;

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

class TextWriter final : public document::DocumentWriter {
 public:
  explicit TextWriter(const document::WriterContext& context)
      : encoded_(encodedOutput(context)),
        isUtf16_(context.settings.text("encoding") == "utf-16"),
        out_(encoded_ ? encoded_->buffer : context.out),
        warnings_(context.warnings),
        lines_(out_, static_cast<std::size_t>(context.settings.number("width"))),
        flow_(lines_),
        table_(out_, lines_, context.settings.text("widths") == "equal", context.settings.text("separator")) {}

  void begin() override;
  void write(const Event& event) override;
  void beginTable(const document::Table& table) override;
  void row(const document::Row& row) override;
  void endTable() override;
  void finish() override;

 private:
  struct Container {
    EventKind kind;
    bool tight = false;
    bool ordered = false;
    std::int64_t number = 0;
  };

  void writeBlock(const Event& event);
  void writeInline(const Event& event);

  bool isInTightItem() const;
  void startBlock(bool isSeparated = true);
  void append(std::string_view text);
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
  TextFlow flow_;
  TextTable table_;
  TableLinks tableLinks_;
  std::vector<Container> containers_;

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
  flow_.end();
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
    flow_.end();
    writeBlock(event);
  }
}

void TextWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::Title: writeTitle(event.text); break;
    case EventKind::BeginSection:
    case EventKind::PageBreak: isBreakDue_ = true; break;
    case EventKind::BeginHeading:
      startBlock();
      flow_.beginHeading(event.number, event.align);
      break;
    case EventKind::BeginParagraph:
      startBlock();
      flow_.beginParagraph(event.align);
      break;
    case EventKind::BeginCode:
      startBlock();
      flow_.beginCode();
      break;
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
    case EventKind::BeginLink: flow_.beginLink(event.address); break;
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

// Text that is directly in an item is a paragraph.
void TextWriter::append(std::string_view text) {
  if (!flow_.isOpen()) {
    startBlock();
    flow_.beginParagraph(Align::Auto);
  }
  flow_.append(text);
}

void TextWriter::endLink() {
  if (const std::string address = flow_.endLink(); !address.empty()) {
    append(address);
  }
}

void TextWriter::writeRule() { lines_.write(std::string(lines_.columns(), '-')); }

void TextWriter::writeTitle(std::string_view text) {
  startBlock();
  flow_.writeHeading(text, 1);
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
  flow_.writeParagraph(event.text);
  lines_.close();
}

void TextWriter::beginTable(const document::Table& table) {
  flow_.end();
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
  for (const std::string& line : tableLinks_.lines()) {
    flow_.writeParagraph(line);
  }
  if (tableLinks_.leftOut() > 0) {
    warnings_.add(WarningCode::SomethingLeftOut, "addresses of links in a long table, left out", tableLinks_.leftOut());
  }
}

}  // namespace

std::unique_ptr<document::DocumentWriter> createTextWriter(const document::WriterContext& context) {
  return std::make_unique<TextWriter>(context);
}

}  // namespace scrivalen::text
