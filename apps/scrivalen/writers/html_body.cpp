#include "writers/html_body.h"

#include "text/ascii.h"

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

// WHATWG URL, 4.3: the ASCII characters that are not URL code points. A percent sign is assumed to begin an escape.
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
  std::wstring result;
  result.reserve(address.size());
  for (const wchar_t c : address) {
    if (isEncodedInAddresses(c)) {
      const auto byte = static_cast<std::size_t>(c);
      const auto digit = [](std::size_t value) { return static_cast<wchar_t>(scrivalen::kHexDigits[value]); };
      result.append({L'%', digit(byte / 16), digit(byte % 16)});
    } else {
      result += c;
    }
  }
  return result;
}

}  // namespace

void HtmlBody::write(const Event& event) {
  switch (groupOf(event.kind)) {
    case EventGroup::Block: breakLineBefore(event.kind); return writeBlock(event);
    case EventGroup::Table: breakLineBefore(event.kind); return writeTable(event);
    case EventGroup::Inline: isLineOpen_ = true; return writeInline(event);
    case EventGroup::Contents: return writeContents(event);
  }
}

// The text of an item in a tight list is not a paragraph; the next block of the item begins on a new line.
void HtmlBody::breakLineBefore(EventKind kind) {
  if (isLineOpen_ && beginsBlock(kind)) {
    markup(L"\n");
  }
  isLineOpen_ = false;
}

void HtmlBody::writeBlock(const Event& event) {
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

void HtmlBody::writeTable(const Event& event) {
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

void HtmlBody::writeInline(const Event& event) {
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

void HtmlBody::writeContents(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginContents: return report_.BeginToc();
    case EventKind::ContentsItem:
      return report_.TocItem(quoted(event.address).c_str(), quoted(event.text).c_str(), event.number);
    case EventKind::EndContents: report_.EndToc(); return markup(L"\n");
    default: return;
  }
}

void HtmlBody::beginHeading(const Event& heading) {
  markup_.clear();
  appendAttribute(L"id=\"", heading.address);
  report_.BeginParagraph(static_cast<PARAGRAPH_TYPE>(heading.number), markup_.c_str());
}

void HtmlBody::beginList(const Event& list) {
  if (!list.ordered || list.number == 1) {
    return markup(list.ordered ? L"<ol>\n" : L"<ul>\n");
  }
  markup_ = L"<ol start=\"" + std::to_wstring(list.number) + L"\">\n";
  markup(markup_.c_str());
}

void HtmlBody::beginItem(const Event& item) {
  switch (item.task) {
    case Task::None: return markup(L"<li>");
    case Task::Open: return markup(L"<li><input type=\"checkbox\" disabled> ");
    case Task::Done: return markup(L"<li><input type=\"checkbox\" checked disabled> ");
  }
}

void HtmlBody::beginCodeBlock(const Event& code) {
  if (code.text.empty()) {
    return markup(L"<pre><code>");
  }
  markup_ = L"<pre><code";
  appendAttribute(L" class=\"language-", code.text);
  markup_ += L'>';
  markup(markup_.c_str());
}

void HtmlBody::beginTable() {
  report_.BeginTable(L"table", nullptr);
  markup(L"\n");
  hasTableBody_ = false;
}

// Browsers repeat a <thead> on each printed page of the table.
void HtmlBody::beginRow(const Event& row) {
  if (row.header) {
    markup(L"<thead>\n");
  } else if (!hasTableBody_) {
    markup(L"<tbody>\n");
    hasTableBody_ = true;
  }
  report_.BeginRow(L"row", L"", row.number);
}

void HtmlBody::endRow(const Event& row) {
  report_.EndRow(L"row");
  markup(row.header ? L"\n</thead>\n" : L"\n");
}

void HtmlBody::endTable() {
  if (hasTableBody_) {
    markup(L"</tbody>\n");
  }
  report_.EndTable(L"table");
  markup(L"\n");
}

void HtmlBody::beginLink(const Event& link) {
  markup_ = L"<a";
  appendAttribute(L" href=\"", encodedAddress(link.address));
  if (!link.title.empty()) {
    appendAttribute(L" title=\"", link.title);
  }
  markup_ += L'>';
  markup(markup_.c_str());
}

void HtmlBody::image(const Event& image) {
  markup_ = L"<img";
  appendAttribute(L" src=\"", encodedAddress(image.address));
  appendAttribute(L" alt=\"", image.text);
  if (!image.title.empty()) {
    appendAttribute(L" title=\"", image.title);
  }
  markup_ += L'>';
  markup(markup_.c_str());
}

void HtmlBody::appendAttribute(const wchar_t* start, std::wstring_view value) {
  markup_.append(start).append(quoted(value)) += L'"';
}

}  // namespace scrivalen::command
