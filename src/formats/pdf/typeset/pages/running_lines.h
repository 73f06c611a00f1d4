#pragma once

#include "document/model/event.h"
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

  /// The page with margins that have room for the header and the footer.
  PageShape withRoom(PageShape shape) const;
  void beginSection(std::string_view name);
  /// @param isPageOpen  the page still belongs to the section
  void endSection(bool isPageOpen);
  void decorate(PageMaker& page) override;
  /// Until the document has a section, its main headings are what the field shows.
  void noteHeading(int level, std::string_view text) override;
  /// Writes the number of pages, if a page shows it, and warns of texts that were shortened.
  void finish(PageMaker& pages);

 private:
  using Parts = std::array<RunningPart, 3>;
  using Pieces = std::vector<RunningPart::Piece>;

  // The number of pages, what follows it, and perhaps the text before it, as they are drawn until the end.
  struct Form {
    int object;
    std::string before;  // set with it so that both fill the room and end at its right edge; else empty
    Pieces pieces;
    Length spare;  // what it may take beyond its room
    document::Align align = document::Align::Left;
  };
  struct Spot {
    Length x;
    Length baseline;
    Length size;
    Length spare;
    document::Align align;
  };

  std::string kept(std::string_view text);
  Length drawImage(PageMaker& page, Length baseline);
  void drawLine(PageMaker& page, const document::RunningText& line, Length left, Length baseline);
  Parts partsOf(const document::RunningText& line, std::int64_t pageNumber);
  Length fit(Parts& parts, Length width);
  void draw(PageMaker& page, const RunningPart& part, Spot place);
  bool drawOwnForm(PageMaker& page, const RunningPart& part, const Spot& place);
  void drawForm(PageMaker& page, const Form& form, const Spot& place, Length width);
  int objectOf(const Form& form);
  void writeForm(PageMaker& pages, const Form& form, const std::string& total);
  TextStyle style(Length size) const;
  Length widthOf(std::string_view text, Length size);
  Length widthOf(const RunningPart& part, Length size) { return widthOf(part.text(), size); }

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
  bool hasSections_ = false;
  bool endsSection_ = false;  // with the page
  std::map<std::string, Form> forms_;
  std::map<std::string, Form> ownForms_;  // of a part of one page
};

}  // namespace scrivalen::typeset
