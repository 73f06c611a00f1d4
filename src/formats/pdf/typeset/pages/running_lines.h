#pragma once

#include "document/model/warnings.h"
#include "document/settings/running_text.h"
#include "document/settings/settings.h"
#include "formats/pdf/typeset/pages/page_maker.h"
#include "formats/pdf/typeset/text/shaper.h"

#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// Draws the header and footer of each page. The number of pages is not known before the end, so it is a form object
/// that all pages draw and that is written last.
class RunningLines final : public PageDecorator {
 public:
  /// @param settings, file, fonts, shaper  not owned; must outlive this object
  RunningLines(const document::FormatSettings& settings, PdfFile& file, FontSet& fonts, Shaper& shaper, Family family);

  void setSection(std::string_view name) { section_ = name; }
  void decorate(PageMaker& page) override;
  /// Writes the number of pages, if a page shows it.
  void finish(PageMaker& pages);

 private:
  struct Piece {
    std::string text;
    bool isTotal = false;
    Length width = 0;
  };

  void drawLine(PageMaker& page, const document::RunningText& line, Length baseline);
  std::vector<Piece> piecesOf(const std::vector<document::RunningPiece>& pieces, std::int64_t pageNumber);
  void draw(PageMaker& page, const std::vector<Piece>& pieces, Length x, Length baseline);

  PdfFile& file_;
  FontSet& fonts_;
  Shaper& shaper_;
  FontId font_;
  document::RunningText header_;
  document::RunningText footer_;
  std::string title_;
  std::string date_;
  std::string section_;
  int total_ = 0;  // the form's number
};

}  // namespace scrivalen::typeset
