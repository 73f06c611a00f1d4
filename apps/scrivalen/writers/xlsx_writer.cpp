#include "writers/plain_writer.h"
#include "writers/writers.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

/// Writes each block into the first cell of a row, and each row of a table as a row. Quotes and lists are indented by
/// blanks.
class XlsxWriter : public PlainWriter {
 public:
  XlsxWriter() : PlainWriter(FORMAT_EXCEL) {}

  bool open(const std::wstring& file, const DocumentSettings& settings) override;

 protected:
  void heading(int level, const std::wstring& text) override;
  void paragraph(const std::wstring& text) override { put(text); }
  void codeBlock(const std::wstring& text) override;
  void rule() override {}
  void beginQuote() override { ++depth_; }
  void endQuote() override { --depth_; }
  void beginList(bool /*tight*/) override { ++depth_; }
  void endList() override { --depth_; }
  void beginItem(const std::wstring& marker) override { marker_ += marker; }
  void endItem() override;
  void beginTable() override { endItem(); }
  void endTable() override {}
  void beginRow(bool header, int columns) override;
  void endRow(bool header) override;
  void cell(const std::wstring& text) override { report_->Cell(text.c_str(), inHeader_ ? 1 : 0, L""); }

 private:
  void put(const std::wstring& text);

  std::wstring marker_;    // of the item whose first block comes next
  std::size_t depth_ = 0;  // open lists and quotes
  bool inHeader_ = false;
};

// If the document begins with a table, its header row is frozen, unless the given style sheet says otherwise.
bool XlsxWriter::open(const std::wstring& file, const DocumentSettings& settings) {
  if (!settings.beginsWithTable) {
    return PlainWriter::open(file, settings);
  }
  DocumentSettings frozen = settings;
  frozen.styles.insert(0, L"sheet { freeze-rows: 1 }\n");
  return PlainWriter::open(file, frozen);
}

void XlsxWriter::heading(int level, const std::wstring& text) {
  report_->Text((marker_ + text).c_str(), static_cast<PARAGRAPH_TYPE>(level), L"", 0);
  marker_.clear();
}

void XlsxWriter::codeBlock(const std::wstring& text) {
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = std::min(text.find(L'\n', start), text.size());
    put(text.substr(start, end - start));
    start = end + 1;
  }
}

// An item without text is still written.
void XlsxWriter::endItem() {
  if (!marker_.empty()) {
    put(L"");
  }
}

void XlsxWriter::beginRow(bool header, int columns) {
  inHeader_ = header;
  report_->BeginRow(L"", L"", columns);
}

void XlsxWriter::endRow(bool) { report_->EndRow(L""); }

// The outermost list is not indented, because its markers already set it off.
void XlsxWriter::put(const std::wstring& text) {
  constexpr std::size_t kBlanksADepth = 4;
  const std::size_t blanks = depth_ > 1 ? (depth_ - 1) * kBlanksADepth : 0;
  report_->Text((std::wstring(blanks, L' ') + marker_ + text).c_str(), PARAGRAPH_NONE, L"", 0);
  marker_.clear();
}

}  // namespace

std::unique_ptr<DocumentWriter> createXlsxWriter() { return std::make_unique<XlsxWriter>(); }

}  // namespace scrivalen::command
