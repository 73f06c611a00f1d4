#include "formats/rtf/rtf_report.h"

#include "report/report_closing.h"
#include "text/address.h"
#include "text/ascii.h"
#include "text/loss_counter.h"
#include "text/null_text.h"

#include <algorithm>
#include <iterator>
#include <string_view>

using namespace scrivalen;

namespace {

struct TableColor {
  std::wstring_view name;
  int index;
};

// Some numbers do not match the colour table, and the second "darkblue" is never reached: documents have always been
// coloured this way.
constexpr TableColor kTableColors[] = {{L"black", 1},        {L"blue", 2},      {L"cyan", 3},        {L"lightgreen", 4},
                                       {L"magenta", 5},      {L"red", 6},       {L"yellow", 7},      {L"white", 8},
                                       {L"darkblue", 8},     {L"darkcyan", 10}, {L"green", 11},      {L"darkblue", 12},
                                       {L"darkmagenta", 13}, {L"darkred", 14},  {L"darkyellow", 15}, {L"gray", 16},
                                       {L"lightgray", 17}};

constexpr int kFontSizeOff = 10;  // half-points, not the size that was set before

int colorIndex(std::wstring_view name) {
  const auto found = std::find_if(std::begin(kTableColors), std::end(kTableColors),
                                  [name](const TableColor& color) { return equalIgnoringCase(color.name, name); });
  return found == std::end(kTableColors) ? 0 : found->index;
}

constexpr int kLinkColor = 2;  // blue

}  // namespace

REPORT_ERRORS RTFReport::Open(const wchar_t* file) {
  if (!OpenReportFile(file_, file)) {
    return REPORT_FILE_ERROR;
  }
  const wchar_t* const title = GetProperty(L"%TITLE%");
  openConforming_ = conforming_;
  document_.SetConforming(conforming_);
  document_.BegDoc(&file_, title ? title : L"Report", landscape);
  return REPORT_OK;
}

REPORT_ERRORS RTFReport::Close() {
  document_.EndDoc();
  const LossCounter loss(document_.LostCharacters(), document_.FirstLostCharacter());
  return scrivalen::closeReportFile(file_, loss, {error_, lost_});
}

void RTFReport::SetReportOption(REPORT_OPTION option, int value) {
  if (option == OPTION_LANDSCAPE) {
    landscape = value != 0;
  } else if (option == OPTION_CONFORMING) {
    conforming_ = value != 0;
  }
}

void RTFReport::Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t*, int) {
  document_.write(text, 0);
  if (type != PARAGRAPH_NONE) {
    EndParagraph(type);
  }
}

void RTFReport::EndParagraph(PARAGRAPH_TYPE type) {
  document_.Paragraf(RTFdoc::PAR_DEFAULT, type == PARAGRAPH_NORMAL ? 0 : type);
}

void RTFReport::BeginAncor(const wchar_t* name) { document_.BookMark(name); }
void RTFReport::Ancor(const wchar_t* name) { document_.BookMark(name); }
void RTFReport::EndOfLine() { document_.LineBreak(); }
void RTFReport::Space() { document_.write(L" ", 0); }

void RTFReport::BeginStyle(REPORT_STYLE style, int value) {
  switch (style) {
    case STYLE_BOLD: document_.BoldOn(); break;
    case STYLE_ITALIC: document_.ItalicOn(); break;
    case STYLE_FONT_SIZE: document_.FontSize(static_cast<char>(value)); break;
    default: break;
  }
}

void RTFReport::EndStyle(REPORT_STYLE style, int) {
  switch (style) {
    case STYLE_BOLD: document_.BoldOff(); break;
    case STYLE_ITALIC: document_.ItalicOff(); break;
    case STYLE_FONT_SIZE: document_.FontSize(kFontSizeOff); break;
    default: break;
  }
}

void RTFReport::BeginToc() { BeginParagraph(PARAGRAPH_NORMAL, L""); }

void RTFReport::TocItem(const wchar_t* anchor, const wchar_t* text, int) {
  document_.HyperLink(text, anchor);
  document_.LineBreak();
}

void RTFReport::EndToc() { EndParagraph(PARAGRAPH_NORMAL); }
void RTFReport::BeginTable(const wchar_t*, const wchar_t*) { document_.BeginTable(); }
void RTFReport::BeginRow(const wchar_t*, const wchar_t*, int columns) { document_.BeginRow(columns, -1); }
void RTFReport::EndRow(const wchar_t*) { document_.EndRow(); }

void RTFReport::BeginCell(const wchar_t*, int, const wchar_t* attributes) {
  document_.BeginCell();
  if (!isEmpty(attributes)) {
    cellColored = true;
    beginColors(attributes);
  }
}

void RTFReport::EndCell(const wchar_t*, int) {
  if (cellColored) {
    cellColored = false;
    endColors();
  }
  document_.EndCell();
}

void RTFReport::Cell(const wchar_t* text, int header, const wchar_t* attributes) {
  document_.BeginCell();
  if (!isEmpty(attributes)) {
    beginColors(attributes);
  }
  if (header) {
    document_.BoldOn();
  }
  document_.write(text, 0);
  if (header) {
    document_.BoldOff();
  }
  if (!isEmpty(attributes)) {
    endColors();
  }
  document_.EndCell();
}

void RTFReport::beginColors(const wchar_t* colors) {
  const std::wstring_view both = colors;
  const std::size_t semicolon = both.find(L';');
  const std::wstring_view foreground = both.substr(0, semicolon);
  document_.FontColorOn(colorIndex(foreground));
  document_.BackgroundColorOn(
      colorIndex(semicolon == std::wstring_view::npos ? foreground : both.substr(semicolon + 1)));
}

void RTFReport::endColors() {
  document_.BackgroundColorOff();
  document_.FontColorOff();
}

void RTFReport::Link(const wchar_t* text, const wchar_t* target) {
  const std::wstring_view address = target ? target : L"";
  if (!openConforming_ || address.empty()) {
    document_.HyperLink(text, target);
  } else if (address.front() == L'#') {
    document_.HyperLink(text, target + 1);
  } else if (hasScheme(address)) {
    outsideLink(text, address);
  } else {
    document_.HyperLink(text, target);
  }
}

// The address is in double quotes, so double quotes within it are percent-encoded (RFC 3986, 2.1).
void RTFReport::outsideLink(const wchar_t* text, std::wstring_view address) {
  const auto write = [this](std::wstring_view piece) {
    if (!piece.empty()) {
      document_.write(piece.data(), static_cast<int>(piece.size()));
    }
  };
  document_.BeginField();
  write(L"HYPERLINK \"");
  for (std::size_t quote = address.find(L'"'); quote != address.npos; quote = address.find(L'"')) {
    write(address.substr(0, quote));
    write(L"%22");
    address.remove_prefix(quote + 1);
  }
  write(address);
  write(L"\" ");
  document_.MiddleField();
  document_.UnderLineOn(0);
  document_.FontColorOn(kLinkColor);
  document_.write(text, 0);
  document_.FontColorOff();
  document_.UnderLineOff(0);
  document_.EndField();
}
