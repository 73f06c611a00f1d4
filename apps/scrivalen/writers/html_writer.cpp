#include "templates.h"
#include "writers/single_report.h"
#include "writers/writers.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

const wchar_t* alignment(Align align) {
  switch (align) {
    case Align::Left: return L" style=\"text-align:left\"";
    case Align::Center: return L" style=\"text-align:center\"";
    case Align::Right: return L" style=\"text-align:right\"";
    case Align::Default: break;
  }
  return L"";
}

bool beginsBlock(EventKind kind) {
  switch (kind) {
    case EventKind::BeginHeading:
    case EventKind::BeginParagraph:
    case EventKind::BeginQuote:
    case EventKind::BeginList:
    case EventKind::BeginCodeBlock:
    case EventKind::Rule:
    case EventKind::MarkupBlock:
    case EventKind::BeginTable: return true;
    default: return false;
  }
}

// WHATWG URL, 4.3: the ASCII characters that are no URL code points. A percent sign is taken to encode already.
bool isEncodedInAddresses(wchar_t c) {
  switch (c) {
    case L' ':
    case L'"':
    case L'<':
    case L'>':
    case L'\\':
    case L'^':
    case L'`':
    case L'{':
    case L'|':
    case L'}':
    case 0x7F: return true;
    default: return static_cast<char32_t>(c) < U' ';
  }
}

std::wstring encodedAddress(std::wstring_view address) {
  constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
  std::wstring result;
  result.reserve(address.size());
  for (const wchar_t c : address) {
    if (isEncodedInAddresses(c)) {
      const auto byte = static_cast<std::size_t>(c);
      result.append({L'%', kDigits[byte / 16], kDigits[byte % 16]});
    } else {
      result += c;
    }
  }
  return result;
}

/// Drives an HtmlReport. What the report has no operation for (lists, quotes, code, rules, images) is written as
/// markup, and so is a link, because Link takes a plain text and a link of Markdown may hold styles.
class HtmlWriter : public DocumentWriter {
 public:
  HtmlWriter() = default;
  HtmlWriter(const HtmlWriter&) = delete;
  HtmlWriter& operator=(const HtmlWriter&) = delete;
  /// A report that goes while it is open would keep its file open.
  ~HtmlWriter() override { report_.Close(); }

  bool open(const std::wstring& file, const DocumentSettings& settings) override;
  void write(const Event& event) override;
  bool close() override { return report_.Close() == REPORT_OK; }
  std::wstring error() const override { return report_.GetError(); }

 private:
  void breakLineBefore(EventKind kind);
  void writeBlock(const Event& event);
  void writeTable(const Event& event);
  void writeInline(const Event& event);
  void writeContents(const Event& event);
  void beginHeading(const Event& heading);
  void beginList(const Event& list);
  void beginItem(const Event& item);
  void beginCodeBlock(const Event& code);
  void beginTable();
  void beginRow(const Event& row);
  void endRow(const Event& row);
  void endTable();
  void beginLink(const Event& link);
  void image(const Event& image);

  void text(std::wstring_view text) { report_.Text(text.data(), PARAGRAPH_NONE, L"", 0); }
  void markup(const wchar_t* text) { report_.Text(text, PARAGRAPH_NONE, L"", 1); }
  std::wstring quoted(std::wstring_view text) { return report_.Quoting(std::wstring(text)); }
  std::wstring templateValue(const std::wstring& value);
  void appendAttribute(const wchar_t* start, std::wstring_view value);

  HtmlReport report_;
  std::wstring markup_;
  bool isLineOpen_ = false;  // text was written behind which nothing ended its block
  bool hasTableBody_ = false;
};

bool HtmlWriter::open(const std::wstring& file, const DocumentSettings& settings) {
  std::wstring templateName = settings.templateFile;
  if (templateName.empty()) {
    templateName = templateFile(kDefaultTemplate).value_or(L"");
  }
  applySettings(report_, settings);
  report_.SetOutputFileName(file.c_str());
  report_.SetTemplateFileName(templateName.c_str());
  const auto value = [&](const std::wstring& text) { return templateName.empty() ? text : templateValue(text); };
  report_.AddProperty(L"%TITLE%", value(settings.title).c_str());
  for (const auto& [name, text] : settings.properties) {
    report_.AddProperty(name.c_str(), value(text).c_str());
  }
  return report_.Open() == REPORT_OK;
}

// A value stands in a template as it is, and a placeholder in it would be filled in turn.
std::wstring HtmlWriter::templateValue(const std::wstring& value) {
  std::wstring result;
  for (const wchar_t c : quoted(value)) {
    if (c == L'%') {
      result += L"&#37;";
    } else {
      result += c;
    }
  }
  return result;
}

void HtmlWriter::write(const Event& event) {
  switch (groupOf(event.kind)) {
    case EventGroup::Block: breakLineBefore(event.kind); return writeBlock(event);
    case EventGroup::Table: breakLineBefore(event.kind); return writeTable(event);
    case EventGroup::Inline: isLineOpen_ = true; return writeInline(event);
    case EventGroup::Contents: return writeContents(event);
  }
}

// The text of an item in a tight list is no paragraph; what follows it in the item begins on a line of its own.
void HtmlWriter::breakLineBefore(EventKind kind) {
  if (isLineOpen_ && beginsBlock(kind)) {
    markup(L"\n");
  }
  isLineOpen_ = false;
}

void HtmlWriter::writeBlock(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginHeading: return beginHeading(event);
    case EventKind::EndHeading: report_.EndParagraph(static_cast<PARAGRAPH_TYPE>(event.number)); return markup(L"\n");
    case EventKind::BeginParagraph: return report_.BeginParagraph(PARAGRAPH_NORMAL, L"");
    case EventKind::EndParagraph: report_.EndParagraph(PARAGRAPH_NORMAL); return markup(L"\n");
    case EventKind::BeginQuote: return markup(L"<blockquote>\n");
    case EventKind::EndQuote: return markup(L"</blockquote>\n");
    case EventKind::BeginList: return beginList(event);
    case EventKind::EndList: return markup(event.ordered ? L"</ol>\n" : L"</ul>\n");
    case EventKind::BeginItem: return beginItem(event);
    case EventKind::EndItem: return markup(L"</li>\n");
    case EventKind::BeginCodeBlock: return beginCodeBlock(event);
    case EventKind::EndCodeBlock: return markup(L"</code></pre>\n");
    case EventKind::Rule: return markup(L"<hr>\n");
    case EventKind::MarkupBlock: return markup(event.text.data());
    default: return;
  }
}

void HtmlWriter::writeTable(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginTable: return beginTable();
    case EventKind::EndTable: return endTable();
    case EventKind::BeginRow: return beginRow(event);
    case EventKind::EndRow: return endRow(event);
    case EventKind::BeginCell: return report_.BeginCell(nullptr, event.header ? 1 : 0, alignment(event.align));
    case EventKind::EndCell: return report_.EndCell(nullptr, event.header ? 1 : 0);
    default: return;
  }
}

void HtmlWriter::writeInline(const Event& event) {
  switch (event.kind) {
    case EventKind::Text: return text(event.text);
    case EventKind::LineBreak: return report_.EndOfLine();
    case EventKind::Markup: return markup(event.text.data());
    case EventKind::BeginEmphasis: return report_.BeginStyle(STYLE_ITALIC, 0);
    case EventKind::EndEmphasis: return report_.EndStyle(STYLE_ITALIC, 0);
    case EventKind::BeginStrong: return report_.BeginStyle(STYLE_BOLD, 0);
    case EventKind::EndStrong: return report_.EndStyle(STYLE_BOLD, 0);
    case EventKind::BeginDeleted: return markup(L"<del>");
    case EventKind::EndDeleted: return markup(L"</del>");
    case EventKind::BeginCode: return markup(L"<code>");
    case EventKind::EndCode: return markup(L"</code>");
    case EventKind::BeginLink: return beginLink(event);
    case EventKind::EndLink: return markup(L"</a>");
    case EventKind::Image: return image(event);
    default: return;
  }
}

void HtmlWriter::writeContents(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginContents: return report_.BeginToc();
    case EventKind::ContentsItem:
      return report_.TocItem(quoted(event.address).c_str(), quoted(event.text).c_str(), event.number);
    case EventKind::EndContents: report_.EndToc(); return markup(L"\n");
    default: return;
  }
}

void HtmlWriter::beginHeading(const Event& heading) {
  markup_.clear();
  appendAttribute(L"id=\"", heading.address);
  report_.BeginParagraph(static_cast<PARAGRAPH_TYPE>(heading.number), markup_.c_str());
}

void HtmlWriter::beginList(const Event& list) {
  if (!list.ordered || list.number == 1) {
    return markup(list.ordered ? L"<ol>\n" : L"<ul>\n");
  }
  markup_ = L"<ol start=\"" + std::to_wstring(list.number) + L"\">\n";
  markup(markup_.c_str());
}

void HtmlWriter::beginItem(const Event& item) {
  switch (item.task) {
    case Task::None: return markup(L"<li>");
    case Task::Open: return markup(L"<li><input type=\"checkbox\" disabled> ");
    case Task::Done: return markup(L"<li><input type=\"checkbox\" checked disabled> ");
  }
}

void HtmlWriter::beginCodeBlock(const Event& code) {
  if (code.text.empty()) {
    return markup(L"<pre><code>");
  }
  markup_ = L"<pre><code";
  appendAttribute(L" class=\"language-", code.text);
  markup_ += L'>';
  markup(markup_.c_str());
}

void HtmlWriter::beginTable() {
  report_.BeginTable(L"table", nullptr);
  markup(L"\n");
  hasTableBody_ = false;
}

// A header row in a <thead> is repeated on every page that the table is printed on.
void HtmlWriter::beginRow(const Event& row) {
  if (row.header) {
    markup(L"<thead>\n");
  } else if (!hasTableBody_) {
    markup(L"<tbody>\n");
    hasTableBody_ = true;
  }
  report_.BeginRow(L"row", L"", row.number);
}

void HtmlWriter::endRow(const Event& row) {
  report_.EndRow(L"row");
  markup(row.header ? L"\n</thead>\n" : L"\n");
}

void HtmlWriter::endTable() {
  if (hasTableBody_) {
    markup(L"</tbody>\n");
  }
  report_.EndTable(L"table");
  markup(L"\n");
}

void HtmlWriter::beginLink(const Event& link) {
  markup_ = L"<a";
  appendAttribute(L" href=\"", encodedAddress(link.address));
  if (!link.title.empty()) {
    appendAttribute(L" title=\"", link.title);
  }
  markup_ += L'>';
  markup(markup_.c_str());
}

void HtmlWriter::image(const Event& image) {
  markup_ = L"<img";
  appendAttribute(L" src=\"", encodedAddress(image.address));
  appendAttribute(L" alt=\"", image.text);
  if (!image.title.empty()) {
    appendAttribute(L" title=\"", image.title);
  }
  markup_ += L'>';
  markup(markup_.c_str());
}

void HtmlWriter::appendAttribute(const wchar_t* start, std::wstring_view value) {
  markup_.append(start).append(quoted(value)) += L'"';
}

}  // namespace

std::unique_ptr<DocumentWriter> createHtmlWriter() { return std::make_unique<HtmlWriter>(); }

}  // namespace scrivalen::command
