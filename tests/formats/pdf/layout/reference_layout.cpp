#include "formats/pdf/layout/reference_layout.h"

#include "formats/pdf/fonts/advance_widths.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace scrivalen::test {
namespace {

constexpr int kLeft = 50;
constexpr int kBottom = 30;
constexpr double kLeast = 0.0001;  // less than any difference between widths

struct Factor {
  const char* characters;
  std::vector<double> factors;
};

const std::vector<Factor>& factorTable() {
  static const std::vector<Factor> table = {
      {" !\"#$%&'", {0.523, 0.697, 0.854, 1.047, 1.047, 1.744, 1.629, 0.697}},
      {"()*+,-./", {0.697, 0.697, 1.047, 1.181, 0.523, 0.697, 0.523, 0.582}},
      {"0123456789", {1.047, 1.047, 1.047, 1.047, 1.047, 1.047, 1.047, 1.047, 1.047, 1.047}},
      {":;<=>?", {0.582, 0.582, 1.181, 1.181, 1.181, 0.929}},
      {"@ABCDEFG", {1.928, 1.511, 1.396, 1.396, 1.511, 1.279, 1.164, 1.511}},
      {"HIJKLMNO", {1.511, 0.697, 0.814, 1.511, 1.279, 1.861, 1.511, 1.511}},
      {"PQRSTUVW", {1.164, 1.511, 1.396, 1.164, 1.279, 1.511, 1.511, 1.976}},
      {"XYZ[\\]^_", {1.511, 1.511, 1.279, 0.697, 0.582, 0.697, 0.982, 1.047}},
      {"`abcdefg", {0.697, 0.929, 1.047, 0.929, 1.047, 0.929, 0.697, 1.047}},
      {"hijklmno", {1.047, 0.582, 0.582, 1.047, 0.582, 1.629, 1.047, 1.047}},
      {"pqrstuvw", {1.047, 1.047, 0.697, 0.814, 0.582, 1.047, 1.047, 1.511}},
      {"xyz{|}~", {1.047, 1.047, 0.929, 1.005, 0.419, 1.005, 1.132}}};
  return table;
}

double factorOf(char16_t character) {
  static const std::map<char16_t, double> factors = [] {
    std::map<char16_t, double> all;
    for (const Factor& row : factorTable()) {
      for (std::size_t i = 0; i < row.factors.size(); ++i) {
        all[static_cast<char16_t>(row.characters[i])] = row.factors[i];
      }
    }
    return all;
  }();
  const auto found = factors.find(character);
  return found == factors.end() ? 1.0 : found->second;
}

std::u16string unitsOf(const wchar_t* text) {
  std::u16string units;
  for (; text && *text; ++text) {
    const auto value = static_cast<char32_t>(*text);
    if (value > 0xFFFF) {
      units += static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10));
      units += static_cast<char16_t>(0xDC00 + ((value - 0x10000) & 0x3FF));
    } else {
      units += static_cast<char16_t>(value);
    }
  }
  return units;
}

std::string lowBytes(const std::u16string& units) {
  std::string bytes;
  for (const char16_t unit : units) {
    bytes += static_cast<char>(unit & 0xFF);
  }
  return bytes;
}

template <typename... Values>
std::string printed(const char* format, Values... values) {
  char text[500];
  std::snprintf(text, sizeof text, format, values...);
  return text;
}

std::string fill(const _RGB_COLOR& color) { return printed("%f %f %f rg", color.red, color.green, color.blue); }

int twoThirds(int size) { return 2 * size / 3; }
int fourThirds(int size) { return 4 * size / 3; }

PDF_STANDARD_FONT_FACE boldFace(PDF_STANDARD_FONT_FACE face) {
  switch (face) {
    case PDF_HELVETICA:
    case PDF_ARIAL: return PDF_HELVETICA_BOLD;
    case PDF_COURIER: return PDF_COURIER_BOLD;
    case PDF_SYMBOL: return PDF_SYMBOL;
    default: return PDF_TIMES_BOLD;
  }
}

bool isSeparator(char16_t c) { return std::u16string(u"\t ,-./").find(c) != std::u16string::npos; }

}  // namespace

ReferenceDocument::ReferenceDocument(int landscape, PDFStuffer::Form form)
    : width_(landscape ? 840 : 595), height_(landscape ? 595 : 840), form_(form) {}

ReferenceItem* ReferenceDocument::current(ReferenceItem::Kind kind) const {
  return current_ && current_->kind == kind ? current_ : nullptr;
}

bool ReferenceDocument::takesText() const {
  return current(ReferenceItem::Paragraph) || current(ReferenceItem::Cell) || current(ReferenceItem::Outline);
}

ReferenceItem* ReferenceDocument::addBlock(ReferenceItem::Kind kind) {
  if (current_ && current_->kind != ReferenceItem::Paragraph) {
    return nullptr;
  }
  items_.push_back(std::make_unique<ReferenceItem>(kind));
  return current_ = items_.back().get();
}

void ReferenceDocument::Paragraf(int) { addBlock(ReferenceItem::Paragraph); }
void ReferenceDocument::BeginTable() { addBlock(ReferenceItem::Table); }

void ReferenceDocument::write(const wchar_t* text) {
  if (text && takesText()) {
    current_->style = style_;
    current_->text = current_->text.value_or(u"") + unitsOf(text);
  }
}

void ReferenceDocument::EndTable() {
  if (current(ReferenceItem::Table)) {
    current_ = nullptr;
  }
}

void ReferenceDocument::BeginRow(int columns) {
  if (ReferenceItem* const table = current(ReferenceItem::Table)) {
    table->children.push_back(std::make_unique<ReferenceItem>(ReferenceItem::Row));
    current_ = table->children.back().get();
    current_->parent = table;
    current_->lastColumn = columns - 1;
  }
}

void ReferenceDocument::EndRow() {
  if (current(ReferenceItem::Row)) {
    current_ = current_->parent;
  }
}

void ReferenceDocument::BeginCell(_RGB_COLOR background) {
  ReferenceItem* const parent = current(ReferenceItem::Row);
  if (parent && parent->cellCount <= parent->lastColumn) {
    parent->children.push_back(std::make_unique<ReferenceItem>(ReferenceItem::Cell));
    current_ = parent->children.back().get();
    current_->parent = parent;
    current_->columnIndex = parent->cellCount++;
    current_->columnCount = parent->lastColumn + 1;
    current_->background = background;
  }
}

void ReferenceDocument::EndCell() {
  if (current(ReferenceItem::Cell)) {
    current_ = current_->parent;
  }
}

ReferenceDocument::Link& ReferenceDocument::linkNamed(const std::u16string& name) {
  for (Link& link : links_) {
    if (link.name == name) {
      return link;
    }
  }
  links_.push_back({name, {}, nullptr});
  return links_.back();
}

void ReferenceDocument::BookMark(const wchar_t* name) {
  if (current(ReferenceItem::Paragraph) || current(ReferenceItem::Cell)) {
    linkNamed(unitsOf(name)).target = current_;
  }
}

void ReferenceDocument::HyperLink(const wchar_t* text, const wchar_t* target) {
  if (!current_) {
    Paragraf(0);
  }
  if (takesText()) {
    write(text);
    linkNamed(unitsOf(target)).sources.push_back(current_);
  }
}

void ReferenceDocument::AddOutlineItem(const wchar_t* text, const wchar_t* target, int level) {
  ReferenceItem* const interrupted = current_;
  items_.push_back(std::make_unique<ReferenceItem>(ReferenceItem::Outline));
  current_ = items_.back().get();
  current_->level = level;
  HyperLink(text, target);
  current_ = interrupted;
}

void ReferenceDocument::AddFont(int id, PDF_STANDARD_FONT_FACE face) { fonts_.push_back({id, face, false}); }

void ReferenceDocument::createFonts() {
  std::vector<Font> all = fonts_;
  for (const Font& base : fonts_) {
    const auto isUsed = [&](int id) {
      return std::any_of(all.begin(), all.end(), [id](const Font& font) { return font.id == id; });
    };
    int id = static_cast<int>(all.size()) + 1;
    while (isUsed(id)) {
      ++id;
    }
    all.push_back({id, base.face, true});
  }
  fonts_ = all;
}

int ReferenceDocument::fontIndex(int font, bool bold) const {
  if (!bold) {
    return font;
  }
  for (const Font& base : fonts_) {
    if (base.id == font) {
      for (const Font& variant : fonts_) {
        if (variant.face == base.face && variant.bold) {
          return variant.id;
        }
      }
      return font;
    }
  }
  return font;
}

float ReferenceDocument::averageWidth(int font, int size, bool bold) const {
  for (const Font& entry : fonts_) {
    if (entry.id == font) {
      switch (entry.face) {
        case 0: return static_cast<float>(size / (bold ? (size < 14 ? 1.93 : 2.0) : 2.01));
        case 4:
        case 14: return static_cast<float>(size / (bold ? 2.09 : 2.25));
        case 8: return static_cast<float>(size / (bold ? 1.35 : 1.45));
        case 12: return static_cast<float>(size / 2.2);
        default: return static_cast<float>(size / (bold ? 1.5 : 1.6));
      }
    }
  }
  return static_cast<float>(size * 2) / 3.0f;
}

// In points; estimates are integers.
double ReferenceDocument::widthOf(char16_t character, const ReferenceStyle& style) const {
  if (form_ == PDFStuffer::Form::Classic) {
    return static_cast<int>(factorOf(character) * averageWidth(style.font, style.size, style.bold) + 0.5);
  }
  for (const Font& entry : fonts_) {
    if (entry.id == style.font) {
      return pdf::advanceWidths(entry.bold ? boldFace(entry.face) : entry.face)[character - 32u] * style.size / 1000.0;
    }
  }
  return 0;
}

void ReferenceDocument::startPage() {
  ++pageCount_;
  pageLines_.push_back("BT");
  pageLines_.push_back(printed("%d %d Td", kLeft, height_ - 30));
}

void ReferenceDocument::finishPage() {
  pageLines_.push_back("ET");
  std::string content;
  for (const std::string& line : pageLines_) {
    content += line + "\n";
  }
  pages_.push_back(content);
  pageLines_.clear();
}

void ReferenceDocument::breakPage() {
  finishPage();
  startPage();
}

void ReferenceDocument::end() {
  createFonts();
  startPage();
  int y = height_ - 30;
  for (const auto& item : items_) {
    if (item->kind == ReferenceItem::Paragraph) {
      y = layoutParagraph(*item, pageLines_, y);
    } else if (item->kind == ReferenceItem::Table) {
      y = layoutTable(*item, pageLines_, y);
    }
  }
  finishPage();
  for (const Link& link : links_) {
    for (const ReferenceItem* const source : link.sources) {
      if (source->kind == ReferenceItem::Outline) {
        attachEntry(*source, link.target);
      } else {
        attachLink(*source, link.target);
      }
    }
  }
}

int ReferenceDocument::leadingGap(ReferenceItem& item, Lines& lines, int y) {
  item.style.font = fontIndex(item.style.font, item.style.bold);
  const int below = y - twoThirds(item.style.size);
  if (below >= kBottom) {
    lines.push_back("1 0 0 1 0 0 Tm");
    lines.push_back(printed("0 %d Td", below));
    return below;
  }
  breakPage();
  return height_ - 30;
}

int ReferenceDocument::layoutParagraph(ReferenceItem& item, Lines& lines, int y) {
  item.x = kLeft;
  item.width = width_ - 80;
  item.top = leadingGap(item, lines, y);
  item.startPage = currentPage();
  item.bottom = item.text ? layoutText(item, lines, *item.text, item.x, item.top, item.width) : item.top;
  item.endPage = currentPage();
  return item.bottom;
}

int ReferenceDocument::layoutTable(ReferenceItem& item, Lines& lines, int y) {
  y = leadingGap(item, lines, y);
  for (const auto& child : item.children) {
    y = layoutRow(*child, lines, y);
  }
  return y;
}

int ReferenceDocument::layoutCell(ReferenceItem& item, Lines& lines, int y) {
  item.top = y;
  item.startPage = currentPage();
  item.style.font = fontIndex(item.style.font, item.style.bold);
  item.width = (width_ - 80) / item.columnCount;
  item.x = item.columnIndex * item.width + kLeft;
  item.bottom = item.text ? layoutText(item, lines, *item.text, item.x + 1, y, item.width) : y;
  item.endPage = currentPage();
  return item.bottom;
}

int ReferenceDocument::layoutRow(ReferenceItem& item, Lines& lines, int y) {
  Lines scratch;
  for (const auto& cell : item.children) {
    if (layoutCell(*cell, scratch, y) > y) {
      y = height_ - 30;
      break;
    }
  }
  scratch.clear();
  int bottom = y;
  for (const auto& cell : item.children) {
    bottom = std::min(bottom, layoutCell(*cell, scratch, y));
  }
  drawFrame(item, lines, y, bottom);
  for (const auto& cell : item.children) {
    layoutCell(*cell, lines, y);
  }
  return bottom;
}

void ReferenceDocument::drawFrame(const ReferenceItem& rowItem, Lines& lines, int y, int bottom) const {
  const int columns = rowItem.lastColumn + 1;
  const int width = columns == 0 ? 0 : (width_ - 80) / columns;
  lines.push_back("ET");
  lines.push_back("0.0 0.0 0.0 RG");
  for (int i = 0; i <= rowItem.lastColumn; ++i) {
    const std::string rectangle = printed("%d %d %d %d re", kLeft + i * width, bottom + 3, width, y - bottom);
    if (static_cast<std::size_t>(i) < rowItem.children.size()) {
      lines.push_back(fill(rowItem.children[static_cast<std::size_t>(i)]->background));
      lines.push_back(rectangle);
      lines.push_back("F");
    }
    lines.push_back(rectangle);
    lines.push_back("S");
  }
  lines.push_back("BT");
}

int ReferenceDocument::layoutText(ReferenceItem& item, Lines& lines, const std::u16string& text, int x, int y,
                                  int width) {
  const int size = item.style.size;
  std::optional<std::u16string> rest = text;
  while (rest) {
    if (y - fourThirds(size) < kBottom) {
      breakPage();
      y = height_ - 30;
    }
    lines.push_back("1 0 0 1 0 0 Tm");
    lines.push_back(printed("%d %d Td", x, y));
    lines.push_back(printed("0 -%d Td", twoThirds(size)));
    lines.push_back(printed("/F%d %d Tf", item.style.font, size));
    lines.push_back(fill(item.style.color));
    const Line line = nextLine(*rest, width, item.style);
    y = writeLine(lines, line.text, size, y - twoThirds(size));
    rest = line.last ? std::nullopt : std::optional(rest->substr(line.count));
  }
  return y;
}

ReferenceDocument::Line ReferenceDocument::nextLine(const std::u16string& text, int width,
                                                    const ReferenceStyle& style) const {
  const std::size_t fit = fittingLength(text, width, style);
  const std::size_t lineEnd = text.find(u'\n');
  if (lineEnd != std::u16string::npos && lineEnd <= fit) {
    return {lineEnd == 0 ? u" " : text.substr(0, lineEnd), lineEnd + 1, false};
  }
  return text.size() <= fit ? Line{text, text.size(), true} : brokenLine(text, fit);
}

// An empty text is one line, no matter how little fits.
std::size_t ReferenceDocument::fittingLength(const std::u16string& text, int width, const ReferenceStyle& style) const {
  if (text.empty()) {
    return 0;
  }
  double sum = 0;
  for (std::size_t i = 0; i < text.size() && text[i] != u'\n'; ++i) {
    sum += widthOf(text[i], style);
    if (sum > width - kLeast) {
      return i;
    }
  }
  return text.size() + 1;
}

ReferenceDocument::Line ReferenceDocument::brokenLine(const std::u16string& text, std::size_t fit) {
  Line line{text.substr(0, fit), fit, false};
  if (!isSeparator(text[fit])) {
    std::size_t position = 0;
    for (const char16_t separator : std::u16string(u" \t-,./")) {
      const std::size_t last = line.text.rfind(separator);
      position = last == std::u16string::npos ? position : std::max(position, last);
    }
    if (position > 0) {
      const bool isBlank = text[position] == u' ' || text[position] == u'\t';
      line = {text.substr(0, isBlank ? position : position + 1), position + 1, false};
    }
  }
  const auto isSpace = [&](std::size_t at) { return at < text.size() && text[at] == u' '; };
  if (line.count == 0 && !isSpace(0)) {
    line = {text.substr(0, 1), 1, false};
  }
  line.count += isSpace(line.count) ? 1 : 0;
  return line;
}

int ReferenceDocument::writeLine(Lines& lines, const std::u16string& text, int size, int y) {
  std::u16string escaped;
  for (const char16_t unit : text) {
    if (unit == u'(' || unit == u')' || unit == u'\\') {
      escaped += u'\\';
    }
    escaped += unit;
  }
  std::string line = "(";
  line += lowBytes(escaped);
  lines.push_back(line += ")Tj");
  lines.push_back(printed("0 -%d Td", twoThirds(size)));
  return y - twoThirds(size);
}

void ReferenceDocument::attachLink(const ReferenceItem& source, const ReferenceItem* target) {
  const int right = source.x + source.width;
  if (source.startPage == source.endPage) {
    annotations_.push_back(
        {source.startPage, printed("%d %d %d %d", source.x, source.top, right, source.bottom), target});
    return;
  }
  annotations_.push_back({source.startPage, printed("%d %d %d %d", source.x, source.top, right, kBottom), target});
  annotations_.push_back(
      {source.endPage, printed("%d %d %d %d", source.x, height_ - 30, right, source.bottom), target});
}

void ReferenceDocument::attachEntry(const ReferenceItem& source, const ReferenceItem* target) {
  entries_.push_back(std::make_unique<Entry>());
  Entry& entry = *entries_.back();
  entry.item = &source;
  entry.target = target;
  Entry* node = &root_;
  for (int step = 0; step < source.level; ++step) {
    if (node->children.empty()) {
      return;
    }
    node = node->children.back();
  }
  node->children.push_back(&entry);
  ++node->count;
  if (node != &root_) {
    ++root_.count;
  }
}

std::string ReferenceDocument::destination(const ReferenceItem* target) {
  return target ? printed("to page %d at %d %d", target->startPage, target->x, target->top) : "to object 0 at 0 0";
}

std::vector<std::string> ReferenceDocument::links() const {
  std::vector<std::string> found;
  for (int page = 1; page <= pageCount_; ++page) {
    for (const Annotation& annotation : annotations_) {
      if (annotation.page == page) {
        found.push_back(printed("page %d ", page) + "[" + annotation.rectangle + "] " + destination(annotation.target));
      }
    }
  }
  return found;
}

void ReferenceDocument::print(const Entry& entry, int depth, std::string& tree) {
  const std::optional<std::u16string>& title = entry.item->text;
  tree += std::string(static_cast<std::size_t>(2 * depth), ' ') + (title ? lowBytes(*title) : "untitled") +
          (entry.count ? printed(" (%d) ", entry.count) : " ") + destination(entry.target) + "\n";
  for (const Entry* const child : entry.children) {
    print(*child, depth + 1, tree);
  }
}

std::string ReferenceDocument::outline() const {
  if (root_.children.empty()) {
    return "";
  }
  std::string tree = printed("%d entries\n", root_.count);
  for (const Entry* const entry : root_.children) {
    print(*entry, 0, tree);
  }
  return tree;
}

// Counts the catalog and the page tree, each font, each page with its content, each link, and the outline with its
// entries.
std::size_t ReferenceDocument::objectCount() const {
  return 2 + fonts_.size() + 2 * pages_.size() + annotations_.size() + entries_.size() + (entries_.empty() ? 0 : 1);
}

}  // namespace scrivalen::test
