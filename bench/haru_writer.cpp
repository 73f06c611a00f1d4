// Draws the library's PDF report with libharu, as a program that uses it would: words are measured with its metrics to
// break the lines, and a cell is filled, stroked and written into. The pages are not compressed.
#include "ledger.h"
#include "prose.h"
#include "writers.h"

#include <hpdf.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace scrivalen::bench {
namespace {

constexpr float kPageWidth = 595;
constexpr float kPageHeight = 840;
constexpr float kLeft = 50;
constexpr float kTop = 810;
constexpr float kBottom = 30;
constexpr float kTextWidth = kPageWidth - 80;
constexpr float kTextSize = 8;
constexpr float kHeadingSize = 20;
constexpr float kLineHeight = 10;
constexpr float kHeadingHeight = 26;
constexpr float kBlockGap = 5;
constexpr float kColumnWidth = 85;

void raise(HPDF_STATUS error, HPDF_STATUS, void*) {
  throw std::runtime_error("libharu: error " + std::to_string(error));
}

/// The ledger and the prose have only letters with the same code in WinAnsi and Latin-1.
std::string narrow(std::wstring_view text) {
  std::string bytes(text.size(), '\0');
  std::transform(text.begin(), text.end(), bytes.begin(), [](wchar_t c) { return static_cast<char>(c); });
  return bytes;
}

class HaruDocument {
 public:
  HaruDocument() : document_(HPDF_New(raise, nullptr)) {
    font_ = HPDF_GetFont(document_, "Times-Roman", "WinAnsiEncoding");
  }
  HaruDocument(const HaruDocument&) = delete;
  HaruDocument& operator=(const HaruDocument&) = delete;
  ~HaruDocument() { HPDF_Free(document_); }

  void paragraph(const std::string& text, float size, float lineHeight) {
    y_ -= kBlockGap;
    std::size_t at = 0;
    while (at < text.size()) {
      turnPage(lineHeight);
      HPDF_Page_SetFontAndSize(page_, font_, size);
      const std::size_t fit = fitting(text.c_str() + at, kTextWidth);
      HPDF_Page_SetRGBFill(page_, 0, 0, 0);
      showLine(text.substr(at, fit), kLeft, y_ - size);
      y_ -= lineHeight;
      at += fit;
    }
  }

  void row(const Row& cells) {
    turnPage(kLineHeight);
    std::size_t lines = 1;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      breakCell(i, narrow(cells[i]));
      lines = std::max(lines, cells_[i].size());
    }
    const float height = static_cast<float>(lines) * kLineHeight;
    turnPage(height);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      drawCell(kLeft + static_cast<float>(i) * kColumnWidth, height, cells_[i]);
    }
    y_ -= height;
  }

  void save(const std::string& file) { HPDF_SaveToFile(document_, file.c_str()); }

 private:
  void turnPage(float needed) {
    if (page_ && y_ - needed >= kBottom) {
      return;
    }
    page_ = HPDF_AddPage(document_);
    HPDF_Page_SetWidth(page_, kPageWidth);
    HPDF_Page_SetHeight(page_, kPageHeight);
    HPDF_Page_SetFontAndSize(page_, font_, kTextSize);
    y_ = kTop;
  }

  // The number of characters that fit on the next line.
  std::size_t fitting(const char* text, float width) {
    const HPDF_UINT count = HPDF_Page_MeasureText(page_, text, width, HPDF_TRUE, nullptr);
    return std::max<std::size_t>(count, 1);
  }

  void breakCell(std::size_t index, const std::string& text) {
    cells_[index].clear();
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t fit = fitting(text.c_str() + at, kColumnWidth);
      cells_[index].push_back(text.substr(at, fit));
      at += fit;
    }
  }

  void drawCell(float x, float height, const std::vector<std::string>& lines) {
    HPDF_Page_SetRGBFill(page_, 1, 1, 1);
    HPDF_Page_Rectangle(page_, x, y_ - height, kColumnWidth, height);
    HPDF_Page_FillStroke(page_);
    HPDF_Page_SetRGBFill(page_, 0, 0, 0);
    float y = y_ - kTextSize;
    for (const std::string& line : lines) {
      showLine(line, x + 1, y);
      y -= kLineHeight;
    }
  }

  void showLine(const std::string& text, float x, float y) {
    HPDF_Page_BeginText(page_);
    HPDF_Page_TextOut(page_, x, y, text.c_str());
    HPDF_Page_EndText(page_);
  }

  HPDF_Doc document_;
  HPDF_Font font_ = nullptr;
  HPDF_Page page_ = nullptr;
  float y_ = 0;
  std::array<std::vector<std::string>, kColumns> cells_;
};

template <typename Draw>
std::string drawn(const std::string& file, Draw draw) {
  try {
    HaruDocument document;
    draw(document);
    document.save(file);
    return {};
  } catch (const std::exception& error) {
    return error.what();
  }
}

}  // namespace

std::string writeWithHaru(Format format, long rows, const std::string& file) {
  if (format != Format::Pdf) {
    return "libharu writes pdf only";
  }
  return drawn(file, [rows](HaruDocument& document) {
    document.paragraph(narrow(kTitle), kHeadingSize, kHeadingHeight);
    Ledger ledger;
    for (long i = 0; i < rows; ++i) {
      document.row(ledger.next());
    }
  });
}

std::string writeProseWithHaru(long sections, const std::string& file) {
  return drawn(file, [sections](HaruDocument& document) {
    Prose prose;
    for (long section = 0; section < sections; ++section) {
      document.paragraph(narrow(prose.nextHeading()), kHeadingSize, kHeadingHeight);
      for (int i = 0; i < kParagraphsOfASection; ++i) {
        document.paragraph(narrow(prose.nextParagraph()), kTextSize, kLineHeight);
      }
    }
  });
}

}  // namespace scrivalen::bench
