#include "formats/xlsx/document/sheet/sheet_writer.h"

#include "document/plain/link_text.h"
#include "formats/xlsx/document/cells/cell_text.h"
#include "formats/xlsx/document/sheet/column_layout.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <utility>

namespace scrivalen::xlsx {
namespace {

constexpr std::size_t kMostBreaks = 1023;            // below the 1,026 that spreadsheet programs accept
constexpr std::uint64_t kLargestSheet = 0xF0000000;  // bytes; an entry of the archive has less than 4 GiB
constexpr std::size_t kLongestCellStart = 128;

char* putAt(char* out, std::string_view text) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

std::string decimalText(double value) {
  const long hundredths = static_cast<long>(value * 100 + 0.5);
  char text[48];
  std::snprintf(text, sizeof text, "%ld.%02ld", hundredths / 100, hundredths % 100);
  return text;
}

// A column's width counts the space beside its digits, 5 of 7 pixels.
constexpr double kSpaceBesideDigits = 5.0 / 7;

std::string columnElements(const std::vector<double>& widths) {
  std::string out;
  for (std::size_t i = 0; i < widths.size();) {
    std::size_t end = i + 1;
    while (end < widths.size() && widths[end] == widths[i]) {
      ++end;
    }
    out.append("<col min=\"").append(std::to_string(i + 1)).append("\" max=\"").append(std::to_string(end));
    out.append("\" width=\"").append(decimalText(widths[i] + kSpaceBesideDigits)).append("\" customWidth=\"1\"/>");
    i = end;
  }
  return out.empty() ? out : "<cols>" + out + "</cols>";
}

std::string viewElement(const SheetLayout& layout, bool isFirst) {
  std::string out("<sheetViews><sheetView");
  out.append(layout.isRightToLeft ? " rightToLeft=\"1\"" : "").append(isFirst ? " tabSelected=\"1\"" : "");
  out.append(" workbookViewId=\"0\"");
  if (layout.frozenRows == 0) {
    return out.append("/></sheetViews>");
  }
  const std::string corner = cellName(layout.frozenRows, 0);
  out.append("><pane ySplit=\"").append(std::to_string(layout.frozenRows)).append("\" topLeftCell=\"").append(corner);
  out.append("\" activePane=\"bottomLeft\" state=\"frozen\"/><selection pane=\"bottomLeft\" activeCell=\"");
  return out.append(corner).append("\" sqref=\"").append(corner).append("\"/></sheetView></sheetViews>");
}

}  // namespace

double SheetLayout::widthOf(std::uint32_t column) const {
  return column < widths.size() ? widths[column] : kUsualWidth;
}

SheetWriter::SheetWriter(ZipWriter& zip, CellFormats& formats, NamedPlaces& places, CellLosses& losses,
                         std::string name, std::size_t number)
    : zip_(zip),
      formats_(formats),
      losses_(losses),
      places_(places),
      name_(std::move(name)),
      number_(number),
      links_(places) {}

void SheetWriter::begin(const SheetLayout& layout) {
  layout_ = layout;
  zip_.beginEntry("xl/worksheets/sheet" + std::to_string(number_) + ".xml");
  put("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
      "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
      "<sheetPr><pageSetUpPr fitToPage=\"1\"/></sheetPr>");
  put(viewElement(layout_, number_ == 1));
  put("<sheetFormatPr defaultRowHeight=\"15\"/>");
  put(columnElements(layout_.widths));
  put("<sheetData>");
}

bool SheetWriter::isFull() const { return row_ >= kMostRows || zip_.entrySize() >= kLargestSheet; }

void SheetWriter::beginRow(double heightPt) {
  rowDigits_ = std::to_string(row_ + 1);
  OutputBuffer& out = zip_.content();
  char* at = putAt(out.reserve(kLongestCellStart), "<row r=\"");
  at = putAt(putAt(at, rowDigits_), "\"");
  out.advance(at);
  if (heightPt > 0) {
    put(" ht=\"");
    put(decimalText(heightPt));
    put("\"");
  }
  out.put('>');
}

void SheetWriter::endRow() {
  put("</row>");
  ++row_;
}

const std::string& SheetWriter::nameOf(std::uint32_t column) {
  while (columnNames_.size() <= column) {
    columnNames_.push_back(columnName(static_cast<std::uint32_t>(columnNames_.size())));
  }
  return columnNames_[column];
}

// All of a cell's start tag but its end.
char* SheetWriter::putCellStart(char* out, std::uint32_t column, std::uint32_t format) {
  out = putAt(putAt(putAt(out, "<c r=\""), nameOf(column)), rowDigits_);
  if (format > 0) {
    out = putAt(out, "\" s=\"");
    out = std::to_chars(out, out + 16, format).ptr;
  }
  return putAt(out, "\"");
}

void SheetWriter::blank(std::uint32_t column, std::uint32_t format) {
  OutputBuffer& out = zip_.content();
  out.advance(putAt(putCellStart(out.reserve(kLongestCellStart), column, format), "/>"));
}

void SheetWriter::text(std::uint32_t column, std::uint32_t format, std::string_view text) {
  OutputBuffer& out = zip_.content();
  out.advance(putAt(putCellStart(out.reserve(kLongestCellStart), column, format), " t=\"inlineStr\"><is>"));
  const std::string_view kept = cutToUnits(text, kLongestCellText);
  losses_.cut += kept.size() < text.size() ? 1u : 0u;
  writeTextElement(out, markup_, kept);
  put("</is></c>");
}

void SheetWriter::number(std::uint32_t column, std::uint32_t format, std::string_view digits) {
  writeValue(column, format, "><v>", digits);
}

void SheetWriter::boolean(std::uint32_t column, std::uint32_t format, std::string_view digit) {
  writeValue(column, format, " t=\"b\"><v>", digit);
}

void SheetWriter::writeValue(std::uint32_t column, std::uint32_t format, std::string_view type,
                             std::string_view value) {
  OutputBuffer& out = zip_.content();
  char* at = putCellStart(out.reserve(kLongestCellStart + value.size()), column, format);
  out.advance(putAt(putAt(putAt(at, type), value), "</v></c>"));
}

void SheetWriter::rich(std::uint32_t column, CellFormat format, const RichText& content) {
  for (const std::string& id : content.anchors) {
    addAnchor(id);
  }
  const std::string rest = addLink(column, content);
  const Font usual = format.font;
  if (!content.runs.empty()) {
    format.font = content.runs.front().font;
  }
  if (content.text.empty() && rest.empty()) {
    return blank(column, formats_.add(format));
  }
  if (content.runs.size() <= 1) {
    return text(column, formats_.add(format), rest.empty() ? content.text : content.text + rest);
  }
  format.font = usual;
  const std::uint32_t index = formats_.add(format);
  OutputBuffer& out = zip_.content();
  out.advance(putAt(putCellStart(out.reserve(kLongestCellStart), column, index), " t=\"inlineStr\"><is>"));
  const std::string_view kept = cutToUnits(content.text, kLongestCellText);
  losses_.cut += kept.size() < content.text.size() ? 1u : 0u;
  put(runsXml(content, kept, usual));
  put("</is></c>");
}

std::string SheetWriter::runsXml(const RichText& text, std::string_view kept, const Font& font) {
  std::string out;
  for (std::size_t i = 0; i < text.runs.size() && text.runs[i].begin < kept.size(); ++i) {
    const std::size_t end = i + 1 < text.runs.size() ? text.runs[i + 1].begin : text.text.size();
    const std::size_t begin = text.runs[i].begin;
    out.append("<r>");
    if (Font run = text.runs[i].font; !(run == font)) {
      run.color = formats_.takesFont(run) ? run.color : kNoColor;
      formats_.appendRunFont(out, run);
    }
    appendTextElement(out, markup_, kept.substr(begin, end - begin));
    out.append("</r>");
  }
  return out;
}

// Returns what the text needs beyond a hyperlink that the sheet does not take.
std::string SheetWriter::addLink(std::uint32_t column, const RichText& text) {
  if (text.links.empty()) {
    return {};
  }
  const TextLink& link = text.links.front();
  if (links_.takes(link.address)) {
    links_.add(std::string(nameOf(column)).append(rowDigits_), link.address, link.title);
    return {};
  }
  ++losses_.plainLinks;
  return document::withAddress(text.text, link.address).substr(text.text.size());
}

void SheetWriter::addAnchor(std::string_view id) {
  places_.add(id, quotedSheetName(name_).append("!$A$").append(std::to_string(row_ + 1)));
}

void SheetWriter::merge(std::uint32_t firstColumn, std::uint32_t lastColumn) {
  ++mergeCount_;
  merges_.append("<mergeCell ref=\"").append(rangeName({row_, firstColumn, row_, lastColumn})).append("\"/>");
}

void SheetWriter::breakPage() {
  if (row_ > 0 && breaks_.size() < kMostBreaks && (breaks_.empty() || breaks_.back() != row_)) {
    breaks_.push_back(row_);
  }
}

// ECMA-376, 18.3.1.99: the order of the elements.
std::string SheetWriter::tail(const PageSetup& page, bool isLandscape) const {
  std::string out("</sheetData>");
  if (filter_) {
    out.append("<autoFilter ref=\"").append(rangeName(*filter_)).append("\"/>");
  }
  if (mergeCount_ > 0) {
    out.append("<mergeCells count=\"").append(std::to_string(mergeCount_)).append("\">");
    out.append(merges_).append("</mergeCells>");
  }
  out.append(links_.xml()).append(page.xml(isLandscape));
  if (!breaks_.empty()) {
    const std::string count = std::to_string(breaks_.size());
    out.append("<rowBreaks count=\"").append(count).append("\" manualBreakCount=\"").append(count).append("\">");
    for (const std::uint32_t row : breaks_) {
      out.append("<brk id=\"").append(std::to_string(row)).append("\" max=\"16383\" man=\"1\"/>");
    }
    out.append("</rowBreaks>");
  }
  // Texts of digits are wanted as texts.
  out.append("<ignoredErrors><ignoredError sqref=\"A1:XFD1048576\" numberStoredAsText=\"1\"/></ignoredErrors>");
  std::size_t relation = links_.relations().size();
  if (!pictures_.isEmpty()) {
    out.append("<drawing r:id=\"rId").append(std::to_string(++relation)).append("\"/>");
  }
  if (page.headerPicture().exists()) {
    out.append("<legacyDrawingHF r:id=\"rId").append(std::to_string(++relation)).append("\"/>");
  }
  return out.append("</worksheet>");
}

void SheetWriter::writeHeaderPicture(const HeaderPicture& picture, PartCounts& parts) {
  if (parts.headerImage.empty()) {
    parts.headerImage = std::string("image").append(std::to_string(++parts.images)).append(picture.extension());
    picture.writeImage(zip_, parts.headerImage);
  }
  picture.writeDrawing(zip_, number_, parts.headerImage);
}

void SheetWriter::end(const PageSetup& page, bool isLandscape, PartCounts& parts) {
  put(tail(page, isLandscape));
  zip_.endEntry();
  losses_.replaced += markup_.replaced();
  std::vector<Relation> relations = links_.relations();
  if (!pictures_.isEmpty()) {
    const std::string number = std::to_string(++parts.drawings);
    relations.push_back({"drawing", std::string("../drawings/drawing").append(number).append(".xml")});
    pictures_.write(zip_, parts.drawings, parts.images);
  }
  if (page.headerPicture().exists()) {
    const std::string number = std::to_string(number_);
    relations.push_back({"vmlDrawing", std::string("../drawings/vmlDrawing").append(number).append(".vml")});
    writeHeaderPicture(page.headerPicture(), parts);
  }
  if (!relations.empty()) {
    zip_.addEntry("xl/worksheets/_rels/sheet" + std::to_string(number_) + ".xml.rels", relationsXml(relations));
  }
}

}  // namespace scrivalen::xlsx
