#include "writers/plain_writer.h"
#include "writers/writers.h"

namespace scrivalen::command {
namespace {

/// Writes the blocks in sequence. A list item is a paragraph that begins with its bullet or number. A table header is a
/// row named "header" of ordinary cells, because the format drops header cells.
class XmlWriter : public PlainWriter {
 public:
  XmlWriter() : PlainWriter(FORMAT_XML) {}

  bool open(const std::wstring& file, const DocumentSettings& settings) override;

 protected:
  void heading(int level, const std::wstring& text) override;
  void paragraph(const std::wstring& text) override;
  void codeBlock(const std::wstring& text) override;
  void rule() override {}
  void beginItem(const std::wstring& marker) override { marker_ += marker; }
  void endItem() override;
  void beginTable() override;
  void endTable() override;
  void beginRow(bool header, int columns) override;
  void endRow(bool header) override;
  void cell(const std::wstring& text) override;

 private:
  static const wchar_t* rowName(bool header) { return header ? L"header" : L"row"; }
  const wchar_t* withLineEnds(const std::wstring& text);
  void put(const std::wstring& text) { report_->Text(withLineEnds(text), PARAGRAPH_NONE, L"", 0); }
  void putElement(const std::wstring& text, PARAGRAPH_TYPE type);

  std::wstring marker_;  // of the item whose first block comes next
  std::wstring lines_;
};

bool XmlWriter::open(const std::wstring& file, const DocumentSettings& settings) {
  if (!PlainWriter::open(file, settings)) {
    return false;
  }
  report_->EndOfLine();
  return true;
}

void XmlWriter::heading(int level, const std::wstring& text) {
  putElement(marker_ + text, static_cast<PARAGRAPH_TYPE>(level));
  marker_.clear();
}

void XmlWriter::paragraph(const std::wstring& text) {
  report_->BeginParagraph(PARAGRAPH_NORMAL, L"");
  put(marker_);
  put(text);
  report_->EndParagraph(PARAGRAPH_NORMAL);
  report_->EndOfLine();
  marker_.clear();
}

void XmlWriter::codeBlock(const std::wstring& text) {
  marker_.clear();
  putElement(text, PARAGRAPH_NORMAL);
}

// An item without text is still written.
void XmlWriter::endItem() {
  if (!marker_.empty()) {
    paragraph(L"");
  }
}

void XmlWriter::beginTable() {
  marker_.clear();
  report_->BeginTable(L"table", L"");
  report_->EndOfLine();
}

void XmlWriter::endTable() {
  report_->EndTable(L"table");
  report_->EndOfLine();
}

void XmlWriter::beginRow(bool header, int columns) { report_->BeginRow(rowName(header), L"", columns); }

void XmlWriter::endRow(bool header) {
  report_->EndRow(rowName(header));
  report_->EndOfLine();
}

void XmlWriter::cell(const std::wstring& text) {
  report_->BeginCell(L"cell", 0, L"");
  put(text);
  report_->EndCell(L"cell", 0);
}

void XmlWriter::putElement(const std::wstring& text, PARAGRAPH_TYPE type) {
  report_->Text(withLineEnds(text), type, L"", 0);
  report_->EndOfLine();
}

// The text with the report's own line ends.
const wchar_t* XmlWriter::withLineEnds(const std::wstring& text) {
  if (text.find(L'\n') == std::wstring::npos) {
    return text.c_str();
  }
  lines_.clear();
  for (const wchar_t c : text) {
    lines_.append(c == L'\n' ? 1 : 0, L'\r') += c;
  }
  return lines_.c_str();
}

}  // namespace

std::unique_ptr<DocumentWriter> createXmlWriter() { return std::make_unique<XmlWriter>(); }

}  // namespace scrivalen::command
