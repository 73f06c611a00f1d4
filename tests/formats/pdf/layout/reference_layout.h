#pragma once

#include "formats/pdf/objects/mem_block.h"
#include "scrivalen/pdf_doc.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::test {

struct ReferenceStyle {
  int font = 0;
  int size = 12;
  bool bold = false;
  _RGB_COLOR color{0, 0, 0};
};

struct ReferenceItem {
  enum Kind { Paragraph, Table, Row, Cell, Outline };

  explicit ReferenceItem(Kind itemKind) : kind(itemKind) {}

  Kind kind;
  ReferenceItem* parent = nullptr;
  int startPage = 0;
  int endPage = 0;
  int top = 0;
  int bottom = 0;
  int width = 0;
  int x = 0;
  std::optional<std::u16string> text;
  ReferenceStyle style;
  std::vector<std::unique_ptr<ReferenceItem>> children;
  int lastColumn = 0;   // of a row
  int cellCount = 0;    // of a row
  int columnIndex = 0;  // of a cell
  int columnCount = 0;  // of a cell
  _RGB_COLOR background{0, 0, 0};
  int level = 0;  // of an outline entry
};

/// A second implementation of the layout, slow and simple: each line is a string in a list, each row is laid out three
/// times, and the rest of a text is copied for each line. CPDFdoc must write the same by its faster ways. The
/// conforming form only changes where lines are broken.
class ReferenceDocument {
 public:
  explicit ReferenceDocument(int landscape, PDFStuffer::Form form = PDFStuffer::Form::Classic);

  void AddFont(int id, PDF_STANDARD_FONT_FACE face);
  void FontNo(int id) { style_.font = id; }
  void FontSize(int size) { style_.size = size; }
  void BoldOn() { style_.bold = true; }
  void BoldOff() { style_.bold = false; }
  void ItalicOn() {}
  void ItalicOff() {}
  void ColorOn(_RGB_COLOR color) { style_.color = color; }
  void ColorOff() { style_.color = {0, 0, 0}; }
  void Paragraf(int type);
  void write(const wchar_t* text);
  void LineBreak() { write(L"\n"); }
  void BeginTable();
  void EndTable();
  void BeginRow(int columns);
  void EndRow();
  void BeginCell(_RGB_COLOR background);
  void EndCell();
  void BookMark(const wchar_t* name);
  void HyperLink(const wchar_t* text, const wchar_t* target);
  void AddOutlineItem(const wchar_t* text, const wchar_t* target, int level);
  void end();

  /// The results of end, in the form of MadePdf.
  const std::vector<std::string>& pages() const { return pages_; }
  std::vector<std::string> links() const;
  std::string outline() const;
  std::size_t objectCount() const;

 private:
  using Lines = std::vector<std::string>;

  struct Font {
    int id;
    PDF_STANDARD_FONT_FACE face;
    bool bold;
  };
  struct Link {
    std::u16string name;
    std::vector<ReferenceItem*> sources;
    ReferenceItem* target = nullptr;
  };
  struct Annotation {
    int page;
    std::string rectangle;
    const ReferenceItem* target;
  };
  struct Entry {
    const ReferenceItem* item = nullptr;
    const ReferenceItem* target = nullptr;
    std::vector<Entry*> children;
    int count = 0;
  };
  struct Line {
    std::u16string text;
    std::size_t count;  // the number of characters consumed
    bool last;
  };

  ReferenceItem* current(ReferenceItem::Kind kind) const;
  bool takesText() const;
  ReferenceItem* addBlock(ReferenceItem::Kind kind);
  Link& linkNamed(const std::u16string& name);

  void createFonts();
  int fontIndex(int font, bool bold) const;
  float averageWidth(int font, int size, bool bold) const;
  double widthOf(char16_t character, const ReferenceStyle& style) const;

  void startPage();
  void finishPage();
  void breakPage();
  int currentPage() const { return pageCount_; }

  int layoutParagraph(ReferenceItem& item, Lines& lines, int y);
  int layoutTable(ReferenceItem& item, Lines& lines, int y);
  int layoutRow(ReferenceItem& item, Lines& lines, int y);
  int layoutCell(ReferenceItem& item, Lines& lines, int y);
  void drawFrame(const ReferenceItem& rowItem, Lines& lines, int y, int bottom) const;
  int leadingGap(ReferenceItem& item, Lines& lines, int y);
  int layoutText(ReferenceItem& item, Lines& lines, const std::u16string& text, int x, int y, int width);
  Line nextLine(const std::u16string& text, int width, const ReferenceStyle& style) const;
  std::size_t fittingLength(const std::u16string& text, int width, const ReferenceStyle& style) const;
  static Line brokenLine(const std::u16string& text, std::size_t fit);
  static int writeLine(Lines& lines, const std::u16string& text, int size, int y);

  void attachLink(const ReferenceItem& source, const ReferenceItem* target);
  void attachEntry(const ReferenceItem& source, const ReferenceItem* target);
  static std::string destination(const ReferenceItem* target);
  static void print(const Entry& entry, int depth, std::string& tree);

  int width_;
  int height_;
  PDFStuffer::Form form_;
  std::vector<Font> fonts_;
  ReferenceStyle style_;
  std::vector<std::unique_ptr<ReferenceItem>> items_;
  std::vector<Link> links_;
  ReferenceItem* current_ = nullptr;
  Lines pageLines_;
  int pageCount_ = 0;
  std::vector<std::string> pages_;
  std::vector<Annotation> annotations_;
  std::vector<std::unique_ptr<Entry>> entries_;
  Entry root_;
};

}  // namespace scrivalen::test
