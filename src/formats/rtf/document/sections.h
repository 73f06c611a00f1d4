#pragma once

#include "document/model/writer.h"
#include "document/word/page_twips.h"
#include "formats/rtf/document/page_header.h"
#include "formats/rtf/document/prolog/style_sheet.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace scrivalen::document::rtf {

/// A paragraph that takes hardly any space. It ends a section, or begins a page before a table.
inline constexpr std::string_view kTinyParagraph = "\\pard\\plain\\sl-20\\slmult0\\fs2";

/// The sections of the file: those of the document, and further ones for wide tables, whose pages are turned to
/// landscape. A section is written when its first content comes, since that decides its orientation.
class Sections {
 public:
  Sections(const WriterContext& context, const StyleSheet& styles);

  /// The paper as the settings have it.
  const PageTwips& paper() const { return paper_; }
  /// The paper turned to landscape; null if it is no wider than upright.
  const PageTwips* turnedPaper() const { return turned_.width > paper_.width ? &turned_ : nullptr; }

  /// A section of the document begins and ends.
  void begin(std::string_view name);
  void end();
  /// Writes a section that has no content; nothing comes after it.
  void finish();

  /// Writes the break before content, where one is needed. A turned page is turned back only by the next content that
  /// is upright.
  void prepare(Orientation orientation);
  /// Whether nothing has been written since the section began.
  bool isAtTop() const { return isAtTop_; }
  /// Content has been written.
  void addContent();
  bool hasContent() const { return hasContent_; }

  /// The next content begins a page, unless it does so anyway.
  void breakPage() { breaksPage_ = hasContent_ && !isAtTop_; }
  bool breaksPage() const { return breaksPage_; }
  bool takeBreak() { return std::exchange(breaksPage_, false); }

 private:
  void write(Orientation orientation);

  OutputBuffer& out_;
  const PageTwips paper_;
  const PageTwips turned_;
  PageHeader header_;

  std::string name_;       // of the document's section
  bool isPending_ = true;  // the section has begun and is not written
  bool isAfterSection_ = false;
  std::optional<Orientation> written_;  // of the section that is written last
  bool isAtTop_ = true;
  bool hasContent_ = false;
  bool breaksPage_ = false;
};

}  // namespace scrivalen::document::rtf
