#include "table_canvas.h"

#include <hpdf.h>

#include <stdexcept>

namespace scrivalen::bench {
namespace {

void raise(HPDF_STATUS error, HPDF_STATUS, void*) {
  throw std::runtime_error("libharu: error " + std::to_string(error));
}

class HaruTable final : public TableCanvas {
 public:
  HaruTable() : document_(HPDF_New(raise, nullptr)) {
    HPDF_SetCompressionMode(document_, HPDF_COMP_ALL);
    font_ =
        HPDF_GetFont(document_, HPDF_LoadTTFontFromFile(document_, SCRIVALEN_LATIN_FONT, HPDF_TRUE), "WinAnsiEncoding");
  }
  HaruTable(const HaruTable&) = delete;
  HaruTable& operator=(const HaruTable&) = delete;
  ~HaruTable() override { HPDF_Free(document_); }

  void save(const std::string& file) { HPDF_SaveToFile(document_, file.c_str()); }

  void beginPage() override {
    page_ = HPDF_AddPage(document_);
    HPDF_Page_SetWidth(page_, static_cast<float>(kPageWidth));
    HPDF_Page_SetHeight(page_, static_cast<float>(kPageHeight));
    HPDF_Page_SetFontAndSize(page_, font_, static_cast<float>(kTextSize));
    HPDF_Page_SetRGBStroke(page_, 0.83F, 0.83F, 0.83F);
    HPDF_Page_SetLineWidth(page_, 0.5F);
  }

  double widthOf(std::string_view utf8) override {
    return static_cast<double>(HPDF_Page_TextWidth(page_, narrowed(utf8)));
  }

  void text(double x, double baseline, std::string_view utf8) override {
    HPDF_Page_BeginText(page_);
    HPDF_Page_TextOut(page_, static_cast<float>(x), static_cast<float>(kPageHeight - baseline), narrowed(utf8));
    HPDF_Page_EndText(page_);
  }

  void rule(double left, double top, double width) override {
    const auto y = static_cast<float>(kPageHeight - top);
    HPDF_Page_MoveTo(page_, static_cast<float>(left), y);
    HPDF_Page_LineTo(page_, static_cast<float>(left + width), y);
    HPDF_Page_Stroke(page_);
  }

 private:
  // The ledger has one letter outside ASCII, with a lead byte of C3.
  const char* narrowed(std::string_view utf8) {
    bytes_.clear();
    for (std::size_t i = 0; i < utf8.size(); ++i) {
      bytes_ += utf8[i] == '\xC3' ? static_cast<char>(utf8[++i] + 0x40) : utf8[i];
    }
    return bytes_.c_str();
  }

  HPDF_Doc document_;
  HPDF_Font font_ = nullptr;
  HPDF_Page page_ = nullptr;
  std::string bytes_;
};

}  // namespace

std::string writeLedgerWithHaru(long rows, const std::string& file) {
  try {
    HaruTable table;
    const bool fits = drawLedger(table, rows);
    table.save(file);
    return fits ? "" : kTooWide;
  } catch (const std::exception& error) {
    return error.what();
  }
}

}  // namespace scrivalen::bench
