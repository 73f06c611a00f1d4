#pragma once

#include "document/model/warnings.h"
#include "document/pictures/header_image.h"
#include "document/settings/running_text.h"
#include "document/settings/settings.h"
#include "formats/pdf/typeset/pages/page_maker.h"
#include "formats/pdf/typeset/pages/running_part.h"
#include "formats/pdf/typeset/pictures/picture_writer.h"
#include "formats/pdf/typeset/text/shaper.h"

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {

/// Draws the header, with its picture, and the footer of each page. The number of pages is not known before the end, so
/// it is a form object that all pages draw and that is written last, together with the text that follows it.
class RunningLines final : public PageDecorator {
 public:
  /// @param settings, warnings, file, shaper, pictures  not owned; must outlive this object
  RunningLines(const document::FormatSettings& settings, document::OutputWarnings& warnings, PdfFile& file,
               Shaper& shaper, PictureWriter& pictures, Family family);

  void setSection(std::string_view name) { section_ = name; }
  void decorate(PageMaker& page) override;
  /// Writes the number of pages, if a page shows it, and warns of texts that were shortened.
  void finish(PageMaker& pages);

 private:
  using Parts = std::array<RunningPart, 3>;
  using Pieces = std::vector<RunningPart::Piece>;

  struct Form {
    int object;
    Pieces pieces;
  };

  std::string kept(std::string_view text);
  Length drawImage(PageMaker& page, Length baseline);
  void drawLine(PageMaker& page, const document::RunningText& line, Length left, Length baseline);
  Parts partsOf(const document::RunningText& line, std::int64_t pageNumber);
  Length fit(Parts& parts, Length width);
  void draw(PageMaker& page, const RunningPart& part, Length x, Length baseline, Length size);
  int formOf(Pieces pieces);
  TextStyle style(Length size) const;
  Length widthOf(const RunningPart& part, Length size);

  document::OutputWarnings& warnings_;
  PdfFile& file_;
  Shaper& shaper_;
  PictureWriter& pictures_;
  FontId font_;
  document::RunningText header_;
  document::RunningText footer_;
  document::HeaderImage image_;
  int imageObject_ = 0;  // once it is written
  bool isCut_ = false;
  std::string title_;
  std::string date_;
  std::string section_;
  std::map<std::string, Form> forms_;
};

}  // namespace scrivalen::typeset
