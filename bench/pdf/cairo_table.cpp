#include "table_canvas.h"

#include <cairo-pdf.h>

namespace scrivalen::bench {
namespace {

class CairoTable final : public TableCanvas {
 public:
  explicit CairoTable(const std::string& file)
      : surface_(cairo_pdf_surface_create(file.c_str(), kPageWidth, kPageHeight)), cairo_(cairo_create(surface_)) {
    cairo_select_font_face(cairo_, "Liberation Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo_, kTextSize);
    cairo_set_line_width(cairo_, 0.5);
  }
  CairoTable(const CairoTable&) = delete;
  CairoTable& operator=(const CairoTable&) = delete;
  ~CairoTable() override {
    cairo_destroy(cairo_);
    cairo_surface_destroy(surface_);
  }

  /// @return the reason of a failure; empty on success
  std::string finished() {
    cairo_show_page(cairo_);
    cairo_surface_finish(surface_);
    const cairo_status_t status = cairo_status(cairo_);
    return status == CAIRO_STATUS_SUCCESS ? "" : cairo_status_to_string(status);
  }

  void beginPage() override {
    if (isOpen_) {
      cairo_show_page(cairo_);
    }
    isOpen_ = true;
  }

  double widthOf(std::string_view utf8) override {
    text_ = utf8;
    cairo_text_extents_t extents;
    cairo_text_extents(cairo_, text_.c_str(), &extents);
    return extents.x_advance;
  }

  void text(double x, double baseline, std::string_view utf8) override {
    text_ = utf8;
    cairo_set_source_rgb(cairo_, 0, 0, 0);
    cairo_move_to(cairo_, x, baseline);
    cairo_show_text(cairo_, text_.c_str());
  }

  void rule(double left, double top, double width) override {
    cairo_set_source_rgb(cairo_, 0.83, 0.83, 0.83);
    cairo_move_to(cairo_, left, top);
    cairo_line_to(cairo_, left + width, top);
    cairo_stroke(cairo_);
  }

 private:
  cairo_surface_t* surface_;
  cairo_t* cairo_;
  bool isOpen_ = false;
  std::string text_;
};

}  // namespace

std::string writeLedgerWithCairo(long rows, const std::string& file) {
  CairoTable table(file);
  const bool fits = drawLedger(table, rows);
  const std::string failure = table.finished();
  return failure.empty() && !fits ? kTooWide : failure;
}

}  // namespace scrivalen::bench
