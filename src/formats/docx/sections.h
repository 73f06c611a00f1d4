#pragma once

#include "document/model/writer.h"
#include "document/word/page_twips.h"
#include "formats/docx/parts/page_header.h"
#include "output/output_buffer.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace scrivalen::document::docx {

/// The sections of the file: those of the document, and further ones for wide tables, whose pages are turned to
/// landscape. A section begins when its first content comes, since that decides its orientation; its properties are
/// written where it ends (ECMA-376, 17.6.18).
class Sections {
 public:
  /// @param out       not owned, as is the header; both must outlive this object
  Sections(OutputBuffer& out, PageHeader& header, const PageTwips& paper, bool isRightToLeft);

  /// The paper as the settings have it.
  const PageTwips& paper() const { return paper_; }
  /// The paper turned to landscape; null if it is no wider than upright.
  const PageTwips* turnedPaper() const { return turned_.width > paper_.width ? &turned_ : nullptr; }

  /// A section of the document begins and ends.
  void begin(std::string_view name);
  void end();
  /// Writes the properties of the last section; nothing comes after it.
  void finish();

  /// Writes the break before content, where one is needed. A turned page is turned back only by the next content that
  /// is upright.
  void prepare(Orientation orientation);
  /// Content has been written.
  void addContent();
  bool hasContent() const { return hasContent_; }

  /// The next content begins a page, unless it does so anyway.
  void breakPage() { breaksPage_ = hasContent_ && !isAtTop_; }
  bool breaksPage() const { return breaksPage_; }
  bool takeBreak() { return std::exchange(breaksPage_, false); }

 private:
  void open(Orientation orientation);
  void writeProperties();

  OutputBuffer& out_;
  PageHeader& header_;
  const PageTwips paper_;
  const PageTwips turned_;
  const bool isRightToLeft_;

  std::string name_;       // of the document's section
  bool isPending_ = true;  // the section has begun and no part of it is open
  bool isAfterSection_ = false;
  std::optional<Orientation> opened_;  // of the section that is written
  std::string references_;             // to its header and footer
  bool isAtTop_ = true;
  bool hasContent_ = false;
  bool breaksPage_ = false;
};

}  // namespace scrivalen::document::docx
