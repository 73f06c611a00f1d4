#include "shaped_prose.h"

#include <cairo-pdf.h>
#include <pango/pangocairo.h>

namespace scrivalen::bench {
namespace {

constexpr double kPageWidth = 595.276;  // A4
constexpr double kPageHeight = 841.89;
constexpr double kMargin = 56.69;
constexpr double kLineHeight = 13;
constexpr double kAfterParagraph = 6;

class PangoPages {
 public:
  explicit PangoPages(const std::string& file)
      : surface_(cairo_pdf_surface_create(file.c_str(), kPageWidth, kPageHeight)),
        cairo_(cairo_create(surface_)),
        layout_(pango_cairo_create_layout(cairo_)) {
    PangoFontDescription* const font = pango_font_description_from_string("DejaVu Sans, Lohit Devanagari");
    pango_font_description_set_absolute_size(font, 10 * PANGO_SCALE);
    pango_layout_set_font_description(layout_, font);
    pango_font_description_free(font);
    pango_layout_set_width(layout_, static_cast<int>((kPageWidth - 2 * kMargin) * PANGO_SCALE));
  }
  PangoPages(const PangoPages&) = delete;
  PangoPages& operator=(const PangoPages&) = delete;
  ~PangoPages() {
    g_object_unref(layout_);
    cairo_destroy(cairo_);
    cairo_surface_destroy(surface_);
  }

  void paragraph(const std::string& text) {
    pango_layout_set_text(layout_, text.data(), static_cast<int>(text.size()));
    PangoLayoutIter* const line = pango_layout_get_iter(layout_);
    do {
      if (y_ + kLineHeight > kPageHeight - kMargin) {
        cairo_show_page(cairo_);
        y_ = kMargin;
      }
      PangoRectangle place;
      pango_layout_iter_get_line_extents(line, nullptr, &place);
      cairo_move_to(cairo_, kMargin + static_cast<double>(place.x) / PANGO_SCALE, y_ + kLineHeight * 0.8);
      pango_cairo_show_layout_line(cairo_, pango_layout_iter_get_line_readonly(line));
      y_ += kLineHeight;
    } while (pango_layout_iter_next_line(line));
    pango_layout_iter_free(line);
    y_ += kAfterParagraph;
  }

  /// @return the reason of a failure; empty on success
  std::string finished() {
    cairo_show_page(cairo_);
    cairo_surface_finish(surface_);
    const cairo_status_t status = cairo_status(cairo_);
    return status == CAIRO_STATUS_SUCCESS ? "" : cairo_status_to_string(status);
  }

 private:
  cairo_surface_t* surface_;
  cairo_t* cairo_;
  PangoLayout* layout_;
  double y_ = kMargin;
};

}  // namespace

std::string writeProseWithPango(long paragraphs, const std::string& file) {
  PangoPages pages(file);
  ShapedProse prose;
  for (long i = 0; i < paragraphs; ++i) {
    pages.paragraph(prose.nextParagraph());
  }
  return pages.finished();
}

}  // namespace scrivalen::bench
