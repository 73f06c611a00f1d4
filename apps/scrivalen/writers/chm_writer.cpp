#include "templates.h"
#include "writers/help_topics.h"
#include "writers/html_body.h"
#include "writers/plain_writer.h"
#include "writers/writers.h"

namespace scrivalen::command {
namespace {

/// Writes each topic as the HTML writer writes its page.
class HtmlHelpWriter : public DocumentWriter {
 public:
  bool open(const std::wstring& file, const DocumentSettings& settings) override;
  void write(const Event& event) override;
  bool close() override;
  std::wstring error() const override { return topics_.error().empty() ? report_.error() : topics_.error(); }
  std::wstring workFolder() const override { return topics_.folder(); }

 private:
  void noteAnchorsAndLinks(const Event& event);

  SingleReport report_{FORMAT_CHM};
  HtmlReport quoting_;
  HtmlBody body_{report_.get(), quoting_};
  HelpTopics topics_{report_};
  int depth_ = 0;  // open quotes and lists; a page does not end inside one
};

bool HtmlHelpWriter::open(const std::wstring& file, const DocumentSettings& settings) {
  return topics_.prepare(file, settings.title) && report_.open(file, settings);
}

void HtmlHelpWriter::write(const Event& event) {
  if (groupOf(event.kind) == EventGroup::Contents) {
    return;  // a help file has its own table of contents
  }
  if (event.kind == EventKind::BeginHeading && depth_ == 0) {
    topics_.beginFor(event.number, event.text);
  }
  topics_.beginIfNone();
  noteAnchorsAndLinks(event);
  body_.write(event);
}

void HtmlHelpWriter::noteAnchorsAndLinks(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginHeading: return topics_.addAnchor(event.address);
    case EventKind::BeginLink: return topics_.expectLinks();
    case EventKind::Markup:
    case EventKind::MarkupBlock: topics_.addAnchorsOf(event.text); return topics_.expectLinks();
    case EventKind::BeginQuote:
    case EventKind::BeginList: ++depth_; return;
    case EventKind::EndQuote:
    case EventKind::EndList: --depth_; return;
    default: return;
  }
}

bool HtmlHelpWriter::close() { return topics_.finish() && report_.close(); }

/// Writes the topics with report operations only: the classic help report escapes all text, so markup is not possible.
class ClassicHelpWriter : public PlainWriter {
 public:
  ClassicHelpWriter() : PlainWriter(FORMAT_CHM) {}

  bool open(const std::wstring& file, const DocumentSettings& settings) override;
  bool close() override { return topics_.finish() && PlainWriter::close(); }
  std::wstring error() const override { return topics_.error().empty() ? PlainWriter::error() : topics_.error(); }
  std::wstring workFolder() const override { return topics_.folder(); }

 protected:
  void heading(int level, const std::wstring& text) override;
  void paragraph(const std::wstring& text) override;
  void codeBlock(const std::wstring& text) override { paragraph(text); }
  void rule() override {}
  void beginQuote() override { ++depth_; }
  void endQuote() override { --depth_; }
  void beginList(bool /*tight*/) override { ++depth_; }
  void endList() override { --depth_; }
  void beginItem(const std::wstring& marker) override { marker_ += marker; }
  void endItem() override;
  void beginTable() override;
  void endTable() override { report_->EndTable(L"table"); }
  void beginRow(bool header, int columns) override;
  void endRow(bool) override { report_->EndRow(L"row"); }
  void cell(const std::wstring& text) override;

 private:
  void putLines(const std::wstring& text);

  HelpTopics topics_{report_};
  std::wstring marker_;  // of the item whose first block comes next
  int depth_ = 0;        // open quotes and lists; a page does not end inside one
  bool inHeader_ = false;
};

bool ClassicHelpWriter::open(const std::wstring& file, const DocumentSettings& settings) {
  return topics_.prepare(file, settings.title) && PlainWriter::open(file, settings);
}

void ClassicHelpWriter::heading(int level, const std::wstring& text) {
  if (depth_ == 0) {
    topics_.beginFor(level, text);
  }
  topics_.beginIfNone();
  report_->BeginParagraph(static_cast<PARAGRAPH_TYPE>(level), L"");
  putLines(marker_ + text);
  report_->EndParagraph(static_cast<PARAGRAPH_TYPE>(level));
  marker_.clear();
}

void ClassicHelpWriter::paragraph(const std::wstring& text) {
  topics_.beginIfNone();
  report_->BeginParagraph(PARAGRAPH_NORMAL, L"");
  putLines(marker_ + text);
  report_->EndParagraph(PARAGRAPH_NORMAL);
  marker_.clear();
}

// An item without text is still written.
void ClassicHelpWriter::endItem() {
  if (!marker_.empty()) {
    paragraph(L"");
  }
}

void ClassicHelpWriter::beginTable() {
  endItem();
  topics_.beginIfNone();
  report_->BeginTable(L"table", nullptr);
}

void ClassicHelpWriter::beginRow(bool header, int columns) {
  inHeader_ = header;
  report_->BeginRow(L"row", L"", columns);
}

// Cell would write the text unescaped.
void ClassicHelpWriter::cell(const std::wstring& text) {
  report_->BeginCell(nullptr, inHeader_ ? 1 : 0, L"");
  putLines(text);
  report_->EndCell(nullptr, inHeader_ ? 1 : 0);
}

void ClassicHelpWriter::putLines(const std::wstring& text) {
  std::size_t start = 0;
  for (std::size_t end = text.find(L'\n'); end != std::wstring::npos; end = text.find(L'\n', start)) {
    report_->Text(text.substr(start, end - start).c_str(), PARAGRAPH_NONE, L"", 0);
    report_->EndOfLine();
    start = end + 1;
  }
  report_->Text(text.substr(start).c_str(), PARAGRAPH_NONE, L"", 0);
}

/// Chooses one of the two writers once the form is known.
class ChmWriter : public DocumentWriter {
 public:
  bool open(const std::wstring& file, const DocumentSettings& settings) override;
  void write(const Event& event) override { writer_->write(event); }
  bool close() override { return writer_->close(); }
  std::wstring error() const override { return writer_->error(); }
  std::wstring workFolder() const override { return writer_ ? writer_->workFolder() : L""; }

 private:
  std::unique_ptr<DocumentWriter> writer_;
};

bool ChmWriter::open(const std::wstring& file, const DocumentSettings& settings) {
  templateFile(kDefaultTemplate);  // only checks that it is readable; the report loads it itself
  if (settings.conforming) {
    writer_ = std::make_unique<HtmlHelpWriter>();
  } else {
    writer_ = std::make_unique<ClassicHelpWriter>();
  }
  return writer_->open(file, settings);
}

}  // namespace

std::unique_ptr<DocumentWriter> createChmWriter() { return std::make_unique<ChmWriter>(); }

}  // namespace scrivalen::command
