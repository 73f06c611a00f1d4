#include "formats/xlsx/document/sheet/sheet_writer.h"

#include "document/plain/link_text.h"
#include "formats/xlsx/document/sheet/column_layout.h"
#include "formats/xlsx/document/sheet/text_height.h"
#include "formats/xlsx/workbook/cell_text.h"
#include "text/utf.h"

#include <algorithm>
#include <utility>

namespace scrivalen::xlsx {
namespace {

constexpr std::size_t kMostOfACharacter = 3;  // bytes of UTF-8 for a UTF-16 code unit
constexpr std::size_t kLongestTitle = 255;    // of a link, in UTF-16 code units
constexpr std::size_t kMostBreaks = 1022;     // what the Open XML SDK allows, below the 1,026 of spreadsheet programs

}  // namespace

double SheetLayout::widthOf(std::uint32_t column) const {
  const double other = otherWidth > 0 ? otherWidth : kUsualWidth;
  return column < widths.size() ? widths[column] : other;
}

bool canFreeze(std::uint32_t rows, double heightPt) {
  constexpr std::uint32_t kMostFrozen = 12;
  constexpr double kHighest = 15 * kLineHeight;
  return rows <= kMostFrozen && heightPt <= kHighest;
}

std::uint64_t mostBytesOf(std::string_view text) {
  constexpr std::uint64_t kMostOfACell = 512;  // beside its text: a number, or tags
  return kMostOfACell + std::min(text.size(), kLongestCellText * kMostOfACharacter) * kMostOfAUnit;
}

std::uint64_t mostBytesOf(const RichText& text) {
  constexpr std::uint64_t kMostOfARun = 512;  // its font and tags
  return mostBytesOf(std::string_view(text.text)) + text.runs.size() * kMostOfARun;
}

SheetWriter::SheetWriter(ZipWriter& zip, CellFormats& formats, NamedPlaces& places, CellLosses& losses,
                         std::string name, std::size_t number, const SheetLimits& limits)
    : SheetRows(zip, number, limits),
      zip_(zip),
      formats_(formats),
      losses_(losses),
      places_(places),
      name_(std::move(name)),
      links_(places) {}

void SheetWriter::begin(const SheetLayout& layout) {
  layout_ = layout;
  layout_.fitsPage = true;
  SheetRows::begin(layout_);
}

void SheetWriter::text(std::uint32_t column, std::uint32_t format, std::string_view text) {
  if (text.size() <= kShortText) {
    plainText(column, format, text);
  } else {
    longText(column, format, text);
  }
}

void SheetWriter::longText(std::uint32_t column, std::uint32_t format, std::string_view text) {
  const std::string_view kept = cutToUnits(text, kLongestCellText);
  if (!hasRoomFor(kept.size() * kMostOfAUnit)) {
    ++losses_.tooLarge;
    return blank(column, format);
  }
  losses_.cut += kept.size() < text.size() ? 1u : 0u;
  plainText(column, format, kept);
}

void SheetWriter::rich(std::uint32_t column, CellFormat format, const RichText& content) {
  for (const std::string& id : content.anchors) {
    addAnchor(id);
  }
  losses_.innerLinks += content.plainLinks;
  losses_.plainParts += content.plainParts;
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
  const std::string whole = content.text + rest;
  const std::string_view kept = cutToUnits(whole, kLongestCellText);
  if (!hasRoomFor(mostBytesOf(content) + rest.size() * kMostOfAUnit)) {
    ++losses_.tooLarge;
    return blank(column, index);
  }
  losses_.cut += kept.size() < whole.size() ? 1u : 0u;
  richText(column, index, runsXml(content, kept, usual));
}

std::string SheetWriter::runsXml(const RichText& text, std::string_view kept, const Font& font) {
  std::string out;
  for (std::size_t i = 0; i < text.runs.size() && text.runs[i].begin < kept.size(); ++i) {
    const std::size_t end = i + 1 < text.runs.size() ? text.runs[i + 1].begin : kept.size();
    const std::size_t begin = text.runs[i].begin;
    out.append("<r>");
    if (const Font& run = text.runs[i].font; !(run == font)) {
      formats_.appendRunFont(out, formats_.addRunFont(run));
    }
    appendTextElement(out, markup(), kept.substr(begin, end - begin));
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
    const std::string_view title = cutToUnits(link.title, kLongestTitle);
    losses_.cutTitles += title.size() < link.title.size() ? 1u : 0u;
    links_.add(cellName(column), link.address, title);
    return {};
  }
  ++losses_.plainLinks;
  return document::withAddress(text.text, link.address).substr(text.text.size());
}

void SheetWriter::addAnchor(std::string_view id) {
  places_.add(id, quotedSheetName(name_).append("!$A$").append(std::to_string(row() + 1)));
}

void SheetWriter::merge(std::uint32_t firstColumn, std::uint32_t lastColumn) {
  ++mergeCount_;
  merges_.append("<mergeCell ref=\"").append(rangeName({row(), firstColumn, row(), lastColumn})).append("\"/>");
}

void SheetWriter::breakPage() {
  if (row() == 0 || (!breaks_.empty() && breaks_.back() == row())) {
    return;
  }
  if (breaks_.size() < kMostBreaks) {
    breaks_.push_back(row());
  } else {
    ++losses_.breaks;
  }
}

// ECMA-376, 18.3.1.99: the order of the elements.
std::string SheetWriter::settingElements(const PageSetup& page, bool isLandscape) const {
  std::string out;
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
  return out;
}

std::string SheetWriter::drawingElements(const PageSetup& page) const {
  std::string out;
  std::size_t relation = links_.relations().size();
  if (!pictures_.isEmpty()) {
    out.append("<drawing r:id=\"rId").append(std::to_string(++relation)).append("\"/>");
  }
  if (page.headerPicture().exists()) {
    out.append("<legacyDrawingHF r:id=\"rId").append(std::to_string(++relation)).append("\"/>");
  }
  return out;
}

void SheetWriter::writeHeaderPicture(const HeaderPicture& picture, PartCounts& parts) {
  if (parts.headerImage.empty()) {
    parts.headerImage = std::string("image").append(std::to_string(++parts.images)).append(picture.extension());
    picture.writeImage(zip_, parts.headerImage);
  }
  picture.writeDrawing(zip_, sheetNumber(), parts.headerImage);
}

void SheetWriter::end(const PageSetup& page, bool isLandscape, PartCounts& parts) {
  SheetRows::end(settingElements(page, isLandscape), drawingElements(page));
  losses_.replaced += markup().replaced();
  std::vector<Relation> relations = links_.relations();
  if (!pictures_.isEmpty()) {
    const std::string number = std::to_string(++parts.drawings);
    relations.push_back({"drawing", std::string("../drawings/drawing").append(number).append(".xml")});
    pictures_.write(zip_, parts.drawings, parts.images);
  }
  if (page.headerPicture().exists()) {
    const std::string number = std::to_string(sheetNumber());
    relations.push_back({"vmlDrawing", std::string("../drawings/vmlDrawing").append(number).append(".vml")});
    writeHeaderPicture(page.headerPicture(), parts);
  }
  if (!relations.empty()) {
    zip_.addEntry("xl/worksheets/_rels/sheet" + std::to_string(sheetNumber()) + ".xml.rels", relationsXml(relations));
  }
}

}  // namespace scrivalen::xlsx
