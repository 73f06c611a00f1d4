#pragma once

#include "document/word/page_twips.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace scrivalen::document {

/// The sections of a word processor's file: those of the document, and further ones for wide tables, whose pages are
/// turned to landscape. A section is opened when its first content comes, since that decides its orientation.
class WordSections {
 public:
  explicit WordSections(const PageTwips& paper);
  WordSections(const WordSections&) = delete;
  WordSections& operator=(const WordSections&) = delete;
  virtual ~WordSections() = default;

  /// The paper as the settings have it.
  const PageTwips& paper() const { return paper_; }
  /// The paper turned to landscape; null if it is no wider than upright.
  const PageTwips* turnedPaper() const { return turned_.width > paper_.width ? &turned_ : nullptr; }

  /// A section of the document begins and ends.
  void begin(std::string_view name);
  void end();

  /// Opens the section that content needs. A turned page is turned back only by the next content that is upright.
  void prepare(Orientation orientation);
  /// Whether nothing has been written since the section was opened.
  bool isAtTop() const { return isAtTop_; }
  /// Content has been written.
  void addContent();
  bool hasContent() const { return hasContent_; }

  /// The next content begins a page, unless it does so anyway.
  void breakPage() { breaksPage_ = hasContent_ && !isAtTop_; }
  bool breaksPage() const { return breaksPage_; }
  bool takeBreak() { return std::exchange(breaksPage_, false); }
  /// Writes a paragraph without height that begins a page, for content that cannot do so itself.
  virtual void writeBreak() = 0;

 protected:
  /// Opens a section that has no content. What comes next is in the section that is open.
  void openPending();
  /// The name of the document's section.
  const std::string& name() const { return name_; }
  const PageTwips& page(Orientation orientation) const { return orientation == Orientation::Turned ? turned_ : paper_; }

 private:
  /// Ends the section before, if there is one, and begins another.
  /// @param before  the orientation of the section before
  virtual void writeBegin(Orientation orientation, std::optional<Orientation> before) = 0;

  void open(Orientation orientation);

  const PageTwips paper_;
  const PageTwips turned_;
  std::string name_;
  bool isPending_ = true;  // the section has begun and no part of it is open
  bool isAfterSection_ = false;
  std::optional<Orientation> opened_;  // of the section that was opened last
  bool isAtTop_ = true;
  bool hasContent_ = false;
  bool breaksPage_ = false;
};

}  // namespace scrivalen::document
