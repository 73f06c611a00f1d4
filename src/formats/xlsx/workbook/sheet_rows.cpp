#include "formats/xlsx/workbook/sheet_rows.h"

#include "formats/xlsx/workbook/cell_name.h"
#include "formats/xlsx/workbook/cell_text.h"
#include "formats/xlsx/workbook/decimal_text.h"

#include <charconv>
#include <cstring>

namespace scrivalen::xlsx {
namespace {

constexpr std::size_t kLongestCellStart = 128;

char* putAt(char* out, std::string_view text) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

// A column's width counts the space beside its digits, 5 of 7 pixels.
constexpr double kSpaceBesideDigits = 5.0 / 7;

std::string widthText(double width) { return decimalText(width + kSpaceBesideDigits, 2); }

std::string columnElements(const std::vector<double>& widths) {
  std::string out;
  for (std::size_t i = 0, end = 0; i < widths.size(); i = end) {
    while (end < widths.size() && widths[end] == widths[i]) {
      ++end;
    }
    if (widths[i] == 0) {
      continue;
    }
    out.append("<col min=\"").append(std::to_string(i + 1)).append("\" max=\"").append(std::to_string(end));
    out.append("\" width=\"").append(widthText(widths[i])).append("\" customWidth=\"1\"/>");
  }
  return out.empty() ? out : "<cols>" + out + "</cols>";
}

std::string viewElement(const SheetFrame& frame, bool isFirst) {
  std::string out("<sheetViews><sheetView");
  out.append(frame.isRightToLeft ? " rightToLeft=\"1\"" : "").append(isFirst ? " tabSelected=\"1\"" : "");
  out.append(" workbookViewId=\"0\"");
  if (frame.frozenRows == 0) {
    return out.append("/></sheetViews>");
  }
  const std::string corner = cellName(frame.frozenRows, 0);
  out.append("><pane ySplit=\"").append(std::to_string(frame.frozenRows)).append("\" topLeftCell=\"").append(corner);
  out.append("\" activePane=\"bottomLeft\" state=\"frozen\"/><selection pane=\"bottomLeft\" activeCell=\"");
  return out.append(corner).append("\" sqref=\"").append(corner).append("\"/></sheetView></sheetViews>");
}

}  // namespace

void SheetRows::begin(const SheetFrame& frame) {
  zip_.beginEntry("xl/worksheets/sheet" + std::to_string(number_) + ".xml");
  put("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
      "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">");
  put(frame.fitsPage ? "<sheetPr><pageSetUpPr fitToPage=\"1\"/></sheetPr>" : "");
  put(viewElement(frame, number_ == 1));
  put("<sheetFormatPr ");
  if (frame.otherWidth > 0) {
    put(std::string("defaultColWidth=\"").append(widthText(frame.otherWidth)).append("\" "));
  }
  put("defaultRowHeight=\"15\"/>");
  put(columnElements(frame.widths));
  put("<sheetData>");
}

void SheetRows::beginRow(double heightPt) {
  rowDigits_ = std::to_string(row_ + 1);
  OutputBuffer& out = zip_.content();
  char* at = putAt(out.reserve(kLongestCellStart), "<row r=\"");
  at = putAt(putAt(at, rowDigits_), "\"");
  out.advance(at);
  if (heightPt > 0) {
    put(" ht=\"");
    put(decimalText(heightPt, 2));
    put("\"");
  }
  out.put('>');
}

void SheetRows::endRow() {
  put("</row>");
  ++row_;
}

const std::string& SheetRows::nameOf(std::uint32_t column) {
  while (columnNames_.size() <= column) {
    columnNames_.push_back(columnName(static_cast<std::uint32_t>(columnNames_.size())));
  }
  return columnNames_[column];
}

// All of a cell's start tag but its end.
char* SheetRows::putCellStart(char* out, std::uint32_t column, std::uint32_t format) {
  out = putAt(putAt(putAt(out, "<c r=\""), nameOf(column)), rowDigits_);
  if (format > 0) {
    out = putAt(out, "\" s=\"");
    out = std::to_chars(out, out + 16, format).ptr;
  }
  return putAt(out, "\"");
}

void SheetRows::blank(std::uint32_t column, std::uint32_t format) {
  OutputBuffer& out = zip_.content();
  out.advance(putAt(putCellStart(out.reserve(kLongestCellStart), column, format), "/>"));
}

void SheetRows::beginText(std::uint32_t column, std::uint32_t format) {
  OutputBuffer& out = zip_.content();
  out.advance(putAt(putCellStart(out.reserve(kLongestCellStart), column, format), " t=\"inlineStr\"><is>"));
}

void SheetRows::plainText(std::uint32_t column, std::uint32_t format, std::string_view text) {
  beginText(column, format);
  writeTextElement(zip_.content(), markup_, text);
  put("</is></c>");
}

void SheetRows::escapedText(std::uint32_t column, std::uint32_t format, std::string_view text) {
  beginText(column, format);
  writeEscapedTextElement(zip_.content(), markup_, text);
  put("</is></c>");
}

void SheetRows::richText(std::uint32_t column, std::uint32_t format, std::string_view runs) {
  beginText(column, format);
  put(runs);
  put("</is></c>");
}

void SheetRows::number(std::uint32_t column, std::uint32_t format, std::string_view digits) {
  writeValue(column, format, "><v>", digits);
}

void SheetRows::boolean(std::uint32_t column, std::uint32_t format, std::string_view digit) {
  writeValue(column, format, " t=\"b\"><v>", digit);
}

void SheetRows::writeValue(std::uint32_t column, std::uint32_t format, std::string_view type, std::string_view value) {
  OutputBuffer& out = zip_.content();
  char* at = putCellStart(out.reserve(kLongestCellStart + value.size()), column, format);
  out.advance(putAt(putAt(putAt(at, type), value), "</v></c>"));
}

// Texts of digits are wanted as texts.
void SheetRows::end(std::string_view settings, std::string_view drawings) {
  put("</sheetData>");
  put(settings);
  put("<ignoredErrors><ignoredError sqref=\"A1:XFD1048576\" numberStoredAsText=\"1\"/></ignoredErrors>");
  put(drawings);
  put("</worksheet>");
  zip_.endEntry();
}

}  // namespace scrivalen::xlsx
