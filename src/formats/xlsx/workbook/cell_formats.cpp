#include "formats/xlsx/workbook/cell_formats.h"

#include "formats/xlsx/workbook/cell_text.h"
#include "formats/xlsx/workbook/decimal_text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

namespace scrivalen::xlsx {
namespace {

using document::Align;

struct BuiltInNumber {
  std::string_view code;
  int id;
};

// ECMA-376, 18.8.30.
constexpr BuiltInNumber kBuiltInNumbers[] = {{"General", 0},  {"0", 1},  {"0.00", 2},  {"#,##0", 3},
                                             {"#,##0.00", 4}, {"0%", 9}, {"0.00%", 10}};
constexpr int kFirstOwnNumber = 164;
constexpr std::size_t kFixedFills = 2;  // at the beginning

// None, and a line below.
constexpr std::string_view kBorders =
    "<borders count=\"2\"><border><left/><right/><top/><bottom/><diagonal/></border>"
    "<border><left/><right/><top/><bottom style=\"thin\"><color rgb=\"FF7F7F7F\"/></bottom><diagonal/></border>"
    "</borders><cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs>";

int builtInId(std::string_view code) {
  const auto* const found = std::find_if(std::begin(kBuiltInNumbers), std::end(kBuiltInNumbers),
                                         [code](const BuiltInNumber& known) { return known.code == code; });
  return found == std::end(kBuiltInNumbers) ? -1 : found->id;
}

std::string hexColor(std::uint32_t color) {
  char text[16];
  std::snprintf(text, sizeof text, "FF%06X", static_cast<unsigned>(color));
  return text;
}

std::string pointsOf(std::uint16_t hundredths) { return shortDecimalText(hundredths / 100.0, 2); }

std::string_view alignmentOf(Align align) {
  switch (align) {
    case Align::Left: return " horizontal=\"left\"";
    case Align::Center: return " horizontal=\"center\"";
    case Align::Right: return " horizontal=\"right\"";
    case Align::Justify: return " horizontal=\"justify\"";
    case Align::Auto: break;
  }
  return "";
}

// Only text on the left or right is indented.
std::string alignmentElement(const CellFormat& format) {
  std::string element("<alignment");
  element.append(alignmentOf(format.indent > 0 && format.align == Align::Auto ? Align::Left : format.align));
  element.append(format.isTop ? " vertical=\"top\"" : "");
  element.append(format.wraps ? " wrapText=\"1\"" : "");
  element.append(format.isShrunk ? " shrinkToFit=\"1\"" : "");
  if (format.indent > 0) {
    element.append(" indent=\"").append(std::to_string(format.indent)).append("\"");
  }
  if (format.direction != Direction::Neutral) {
    element.append(format.direction == Direction::LeftToRight ? " readingOrder=\"1\"" : " readingOrder=\"2\"");
  }
  return element.append("/>");
}

bool isAligned(const CellFormat& format) {
  return format.align != Align::Auto || format.isTop || format.wraps || format.isShrunk || format.indent > 0 ||
         format.direction != Direction::Neutral;
}

void appendCount(std::string& out, std::string_view element, std::size_t count) {
  out.append("<").append(element).append(" count=\"").append(std::to_string(count)).append("\">");
}

void appendAttribute(std::string& out, std::string_view name, std::uint64_t value) {
  out.append(" ").append(name).append("=\"").append(std::to_string(value)).append("\"");
}

}  // namespace

std::uint64_t Font::key() const {
  return static_cast<std::uint64_t>(color) << 32 | static_cast<std::uint64_t>(size) << 16 |
         static_cast<std::uint64_t>(family) << 8 | flags;
}

std::uint64_t CellFormat::key() const {
  return static_cast<std::uint64_t>(fill) << 32 | static_cast<std::uint64_t>(number) << 24 |
         static_cast<std::uint64_t>(indent) << 16 | static_cast<std::uint64_t>(align) << 8 |
         static_cast<std::uint64_t>(direction) << 4 | (isShrunk ? 8u : 0u) | (wraps ? 4u : 0u) | (isTop ? 2u : 0u) |
         (isRuled ? 1u : 0u);
}

CellFormats::CellFormats(std::size_t mostFonts, std::size_t keptFonts, std::size_t mostFills)
    : mostFonts_(mostFonts),
      keptFonts_(keptFonts),
      mostFills_(mostFills),
      families_{"Calibri", "Calibri", "Courier New", "Calibri"} {
  numbers_.emplace_back("General");
  setUsual({});
}

void CellFormats::setUsual(const CellFormat& format) {
  fonts_.clear();
  fontIndices_.clear();
  formats_.clear();
  indices_.clear();
  insert(format);
}

std::optional<NumberFormat> CellFormats::addNumber(std::string_view code, std::size_t kept) {
  const auto found = std::find(numbers_.begin(), numbers_.end(), code);
  if (found != numbers_.end()) {
    return static_cast<NumberFormat>(found - numbers_.begin());
  }
  if (numbers_.size() + kept >= kMostNumbers) {
    return std::nullopt;
  }
  numbers_.emplace_back(code);
  return static_cast<NumberFormat>(numbers_.size() - 1);
}

std::uint32_t CellFormats::add(const CellFormat& format) {
  const auto known = indices_.find({format.font.key(), format.key()});
  if (known != indices_.end()) {
    return known->second;
  }
  if (canAdd(format)) {
    return insert(format);
  }
  const CellFormat plain = withoutColors(format);
  countRefused(format.font, plain.font);
  const auto other = indices_.find({plain.font.key(), plain.key()});
  return other != indices_.end() ? other->second : insert(plain);
}

// After very many of them only the number format stays, of which there are few.
CellFormat CellFormats::withoutColors(const CellFormat& format) const {
  CellFormat plain = format;
  plain.fill = kNoColor;
  plain.font = plainerFont(format.font);
  if (formats_.size() >= kMostPlain && !indices_.contains({plain.font.key(), plain.key()})) {
    plain = formats_.front().format;
    plain.number = format.number;
  }
  return plain;
}

bool CellFormats::takes(const CellFormat& format) const {
  return indices_.contains({format.font.key(), format.key()}) || canAdd(format);
}

bool CellFormats::canAdd(const CellFormat& format) const {
  return formats_.size() < kMost && hasRoomFor(format.font) && hasRoomForFill(format.fill);
}

bool CellFormats::hasRoomForFill(std::uint32_t color) const {
  return color == kNoColor || kFixedFills + fills_.size() < mostFills_ || fillIndices_.contains(color);
}

// The last fonts are kept for text without a colour of its own, because bold means more than a colour, and the very
// last for such text of the usual size.
std::size_t CellFormats::mostFontsWith(const Font& font) const {
  if (font.color != kNoColor && font.color != kLinkColor) {
    return mostFonts_ - keptFonts_;
  }
  return font.size == formats_.front().format.font.size ? mostFonts_ : mostFonts_ - keptFonts_ / 2;
}

bool CellFormats::hasRoomFor(const Font& font) const {
  const std::uint64_t key = font.key();
  return fonts_.size() + runFonts_.size() < mostFontsWith(font) || fontIndices_.contains(key) ||
         runFonts_.contains(key);
}

Font CellFormats::plainerFont(Font font) const {
  const Font& usual = formats_.front().format.font;
  font.color = kNoColor;
  if (hasRoomFor(font)) {
    return font;
  }
  font.size = usual.size;
  return hasRoomFor(font) ? font : usual;
}

void CellFormats::countRefused(const Font& wanted, const Font& given) {
  Font expected = wanted;
  expected.color = given.color;
  ++(given == expected ? refused_ : refusedFonts_);
}

Font CellFormats::addRunFont(const Font& font) {
  const Font given = hasRoomFor(font) ? font : plainerFont(font);
  if (!(given == font)) {
    countRefused(font, given);
  }
  if (!fontIndices_.contains(given.key())) {
    runFonts_.insert(given.key());
  }
  return given;
}

std::uint32_t CellFormats::insert(const CellFormat& format) {
  const auto index = static_cast<std::uint32_t>(formats_.size());
  formats_.push_back({format, fontOf(format.font), fillOf(format.fill)});
  indices_.emplace(Key{format.font.key(), format.key()}, index);
  return index;
}

std::uint32_t CellFormats::fontOf(const Font& font) {
  const auto [entry, isNew] = fontIndices_.emplace(font.key(), static_cast<std::uint32_t>(fonts_.size()));
  if (isNew) {
    fonts_.push_back(font);
    runFonts_.erase(font.key());
  }
  return entry->second;
}

std::uint32_t CellFormats::fillOf(std::uint32_t color) {
  if (color == kNoColor) {
    return 0;
  }
  const auto [entry, isNew] = fillIndices_.emplace(color, static_cast<std::uint32_t>(fills_.size() + kFixedFills));
  if (isNew) {
    fills_.push_back(color);
  }
  return entry->second;
}

void CellFormats::appendRunFont(std::string& out, const Font& font) const {
  out.append("<rPr>");
  appendFont(out, font, "rFont");
  out.append("</rPr>");
}

void CellFormats::appendFont(std::string& out, const Font& font, std::string_view nameElement) const {
  constexpr struct {
    Font::Flag flag;
    std::string_view element;
  } kFlags[] = {{Font::Bold, "<b/>"},
                {Font::Italic, "<i/>"},
                {Font::Deleted, "<strike/>"},
                {Font::Underlined, "<u/>"},
                {Font::Superscript, "<vertAlign val=\"superscript\"/>"},
                {Font::Subscript, "<vertAlign val=\"subscript\"/>"}};
  for (const auto& known : kFlags) {
    out.append((font.flags & known.flag) != 0 ? known.element : "");
  }
  out.append("<sz val=\"").append(pointsOf(font.size)).append("\"/>");
  if (font.color != kNoColor) {
    out.append("<color rgb=\"").append(hexColor(font.color)).append("\"/>");
  }
  out.append("<").append(nameElement).append(" val=\"");
  appendXml(out, nameOf(font));
  out.append("\"/>");
}

std::string CellFormats::xml() const {
  std::string out(
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">");
  appendNumbers(out);
  appendFonts(out);
  appendFills(out);
  out.append(kBorders);
  appendFormats(out);
  return out.append(
      "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>"
      "<dxfs count=\"0\"/><tableStyles count=\"0\" defaultTableStyle=\"TableStyleMedium9\" "
      "defaultPivotStyle=\"PivotStyleLight16\"/></styleSheet>");
}

// The ids of the number formats: those that the standard has come first.
std::vector<int> CellFormats::numberIds() const {
  int next = kFirstOwnNumber;
  std::vector<int> ids;
  for (const std::string& code : numbers_) {
    const int known = builtInId(code);
    ids.push_back(known >= 0 ? known : next++);
  }
  return ids;
}

void CellFormats::appendNumbers(std::string& out) const {
  const std::vector<int> ids = numberIds();
  const auto isOwn = [](int id) { return id >= kFirstOwnNumber; };
  const auto count = std::count_if(ids.begin(), ids.end(), isOwn);
  if (count == 0) {
    return;
  }
  appendCount(out, "numFmts", static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (isOwn(ids[i])) {
      out.append("<numFmt numFmtId=\"").append(std::to_string(ids[i])).append("\" formatCode=\"");
      appendXml(out, numbers_[i]);
      out.append("\"/>");
    }
  }
  out.append("</numFmts>");
}

void CellFormats::appendFonts(std::string& out) const {
  appendCount(out, "fonts", fonts_.size());
  for (const Font& font : fonts_) {
    out.append("<font>");
    appendFont(out, font, "name");
    out.append("</font>");
  }
  out.append("</fonts>");
}

void CellFormats::appendFills(std::string& out) const {
  appendCount(out, "fills", fills_.size() + kFixedFills);
  out.append("<fill><patternFill patternType=\"none\"/></fill><fill><patternFill patternType=\"gray125\"/></fill>");
  for (const std::uint32_t color : fills_) {
    out.append("<fill><patternFill patternType=\"solid\"><fgColor rgb=\"").append(hexColor(color));
    out.append("\"/><bgColor indexed=\"64\"/></patternFill></fill>");
  }
  out.append("</fills>");
}

void CellFormats::appendFormats(std::string& out) const {
  const std::vector<int> ids = numberIds();
  appendCount(out, "cellXfs", formats_.size());
  for (const Entry& entry : formats_) {
    const CellFormat& format = entry.format;
    out.append("<xf");
    appendAttribute(out, "numFmtId", static_cast<std::uint64_t>(ids[format.number]));
    appendAttribute(out, "fontId", entry.font);
    appendAttribute(out, "fillId", entry.fill);
    appendAttribute(out, "borderId", format.isRuled ? 1 : 0);
    out.append(" xfId=\"0\"");
    out.append(format.number != kGeneral ? " applyNumberFormat=\"1\"" : "");
    out.append(entry.font != 0 ? " applyFont=\"1\"" : "");
    out.append(entry.fill != 0 ? " applyFill=\"1\"" : "");
    out.append(format.isRuled ? " applyBorder=\"1\"" : "");
    if (isAligned(format)) {
      out.append(" applyAlignment=\"1\">").append(alignmentElement(format)).append("</xf>");
    } else {
      out.append("/>");
    }
  }
  out.append("</cellXfs>");
}

}  // namespace scrivalen::xlsx
