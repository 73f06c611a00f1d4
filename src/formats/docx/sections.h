#pragma once

#include "document/word/word_sections.h"
#include "formats/docx/parts/page_header.h"
#include "output/output_buffer.h"

#include <optional>
#include <string>

namespace scrivalen::document::docx {

/// Writes the sections of the file. The properties of one are written where it ends (ECMA-376, 17.6.18).
class Sections : public WordSections {
 public:
  /// @param out, header  not owned; must outlive this object
  Sections(OutputBuffer& out, PageHeader& header, const PageTwips& paper, bool isRightToLeft)
      : WordSections(paper), out_(out), header_(header), isRightToLeft_(isRightToLeft) {}

  /// Writes the properties of the last section; nothing comes after it.
  void finish();
  void writeBreak() override;

 private:
  void writeBegin(Orientation orientation, std::optional<Orientation> before) override;
  void writeProperties(Orientation orientation);

  OutputBuffer& out_;
  PageHeader& header_;
  const bool isRightToLeft_;
  Orientation opened_ = Orientation::Upright;  // of the section that is open
  std::string references_;                     // to its header and footer
};

}  // namespace scrivalen::document::docx
