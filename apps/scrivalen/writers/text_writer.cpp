#include "text/utf.h"
#include "writers/plain_writer.h"
#include "writers/writers.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

std::size_t characters(std::wstring_view text) {
  const wchar_t* at = text.data();
  std::size_t count = 0;
  while (at != text.data() + text.size()) {
    scrivalen::nextCharacter(at, text.data() + text.size());
    ++count;
  }
  return count;
}

/// Writes each block as a line, with an empty line between two blocks unless they are in a tight list. Lines of quotes
/// and items begin with a prefix.
class TextWriter : public PlainWriter {
 public:
  TextWriter() : PlainWriter(FORMAT_TEXT) {}

  bool open(const std::wstring& file, const DocumentSettings& settings) override;

 protected:
  void heading(int level, const std::wstring& text) override;
  void paragraph(const std::wstring& text) override;
  void codeBlock(const std::wstring& text) override;
  void rule() override;
  void beginQuote() override;
  void endQuote() override { leave(); }
  void beginList(bool tight) override;
  void endList() override { leave(); }
  void beginItem(const std::wstring& marker) override;
  void endItem() override;
  void beginTable() override { separate(); }
  void endTable() override {}
  void beginRow(bool header, int columns) override;
  void endRow(bool header) override;
  void cell(const std::wstring& text) override;

 private:
  struct Container {
    std::size_t prefixSize;  // of the enclosing containers
    bool tight;
  };

  void enter(std::wstring_view prefix, bool tight);
  void leave();
  const std::wstring& lineStart() const { return lead_.empty() ? prefix_ : lead_; }
  void put(const std::wstring& text) { report_->Text(text.c_str(), PARAGRAPH_NONE, L"", 0); }
  void separate();
  void writeLines(const std::wstring& text, std::wstring_view indentation);
  void beginLine();
  void endLine();

  std::vector<Container> containers_{{0, false}};
  std::wstring prefix_;  // of each line in the innermost container
  std::wstring lead_;    // replaces the prefix of the next line: prefix and item marker
  std::wstring line_;
  std::wstring separator_;
  bool isSeparated_ = true;  // the next block needs no empty line before it
};

bool TextWriter::open(const std::wstring& file, const DocumentSettings& settings) {
  separator_ = settings.columnSeparator;
  return PlainWriter::open(file, settings);
}

void TextWriter::heading(int level, const std::wstring& text) {
  separate();
  writeLines(text, L"");
  if (level > 2) {
    return;
  }
  const std::size_t length = characters(std::wstring_view(text).substr(text.rfind(L'\n') + 1));
  writeLines(std::wstring(length, level == 1 ? L'=' : L'-'), L"");
}

void TextWriter::paragraph(const std::wstring& text) {
  separate();
  writeLines(text, L"");
}

void TextWriter::codeBlock(const std::wstring& text) {
  separate();
  writeLines(text, L"    ");
}

void TextWriter::rule() {
  constexpr std::size_t kRuleLength = 40;
  separate();
  writeLines(std::wstring(kRuleLength, L'-'), L"");
}

void TextWriter::beginQuote() {
  constexpr std::wstring_view kMark = L"> ";
  separate();
  if (!lead_.empty()) {
    lead_ += kMark;
  }
  enter(kMark, false);
}

void TextWriter::beginList(bool tight) {
  separate();
  enter(L"", tight);
  isSeparated_ = true;
}

void TextWriter::beginItem(const std::wstring& marker) {
  if (lead_.empty()) {
    lead_ = prefix_;
  }
  lead_ += marker;
  enter(std::wstring(marker.size(), L' '), containers_.back().tight);
}

// An item without text is still written.
void TextWriter::endItem() {
  if (!lead_.empty()) {
    writeLines(L"", L"");
  }
  leave();
}

void TextWriter::enter(std::wstring_view prefix, bool tight) {
  containers_.push_back({prefix_.size(), tight});
  prefix_ += prefix;
}

void TextWriter::leave() {
  prefix_.resize(containers_.back().prefixSize);
  containers_.pop_back();
}

void TextWriter::beginRow(bool, int columns) {
  beginLine();
  report_->BeginRow(L"", L"", columns);
}

void TextWriter::endRow(bool) {
  report_->EndRow(L"");
  isSeparated_ = false;
}

// A row is a single line with exactly one separator between two cells, so line breaks and separators inside a cell
// become blanks.
void TextWriter::cell(const std::wstring& text) {
  line_ = text;
  std::replace(line_.begin(), line_.end(), L'\n', L' ');
  for (std::size_t at = line_.find(separator_); at != std::wstring::npos && !separator_.empty();
       at = line_.find(separator_, at + 1)) {
    line_.replace(at, separator_.size(), L" ");
  }
  report_->Cell(line_.c_str(), 0, L"");
}

void TextWriter::separate() {
  if (isSeparated_ || containers_.back().tight) {
    return;
  }
  line_ = prefix_;
  endLine();
  isSeparated_ = true;
}

void TextWriter::writeLines(const std::wstring& text, std::wstring_view indentation) {
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = std::min(text.find(L'\n', start), text.size());
    line_ = lineStart();
    lead_.clear();
    line_.append(indentation).append(text, start, end - start);
    endLine();
    start = end + 1;
  }
  isSeparated_ = false;
}

void TextWriter::beginLine() {
  put(lineStart());
  lead_.clear();
}

void TextWriter::endLine() {
  line_.erase(line_.find_last_not_of(L' ') + 1);
  put(line_);
  report_->EndOfLine();
}

}  // namespace

std::unique_ptr<DocumentWriter> createTextWriter() { return std::make_unique<TextWriter>(); }

}  // namespace scrivalen::command
