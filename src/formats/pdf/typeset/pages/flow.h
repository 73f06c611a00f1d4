#pragma once

#include "formats/pdf/typeset/pages/page_maker.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::typeset {

/// An area beside or behind the blocks of a container, on each of its pages: the bar of a quote, the shade of code.
struct Backdrop {
  Length left;
  Length width;
  Rgb color;
};

/// Gives blocks their place, from top to bottom and page by page.
class Flow {
 public:
  /// @param pages, places  not owned; must outlive this object
  Flow(PageMaker& pages, NamedPlaces& places, const PageShape& shape)
      : pages_(pages), places_(places), usual_(shape), shape_(shape) {}

  const PageShape& shape() const { return shape_; }
  /// Where text begins, and how much space it has.
  Length left() const { return shape_.left + indent_; }
  Length width() const { return shape_.textWidth() - indent_; }
  Length indent() const { return indent_; }
  /// The place of what is as far from the right margin as this is from the left one.
  Length mirrored(Length left, Length width) const { return 2 * shape_.left + shape_.textWidth() - left - width; }
  void indentBy(Length width) { indent_ += width; }

  /// Leaves at least this much space before what comes next, unless that begins a page.
  void space(Length height) { gap_ = std::max(gap_, height); }
  /// The space before what comes next.
  Length gap() const { return gap_; }
  /// Takes space, on a new page if there is not enough left on this one. @return where it begins
  Length take(Length height) { return take(height, backdrops_.size()); }
  /// The same, for a block that is only in the first of the backdrops. They are mirrored on the page that they begin
  /// with a mirrored block.
  Length take(Length height, std::size_t backdrops, bool isMirrored = false);
  /// How much space the page has left; all of it on a new one.
  Length room() const;
  bool isAtTop() const { return !pages_.isOpen() || isAtTop_; }
  /// Makes sure that a height is on one page, if a page has as much.
  void keepTogether(Length height);
  void endPage();
  /// Ends the page, and turns the ones that come.
  void turn(bool isTurned);

  /// Names the place of what comes next.
  void mark(std::string name) { marks_.push_back(std::move(name)); }
  /// Names the end of the document what nothing has come after.
  void markEnd();

  std::size_t backdrops() const { return backdrops_.size(); }
  void beginBackdrop(const Backdrop& backdrop) { backdrops_.push_back({backdrop, std::nullopt, false}); }
  void endBackdrop();

 private:
  struct OpenBackdrop {
    Backdrop backdrop;
    std::optional<Length> top;
    bool isMirrored = false;
  };

  void beginPage();
  void draw(OpenBackdrop& open);
  void placeMarks(const Place& place);

  PageMaker& pages_;
  NamedPlaces& places_;
  PageShape usual_;
  PageShape shape_;
  Length y_ = 0;
  Length gap_ = 0;
  Length indent_ = 0;
  bool isAtTop_ = true;
  std::vector<OpenBackdrop> backdrops_;
  std::vector<std::string> marks_;
  Place end_;  // of the last page that is written
};

}  // namespace scrivalen::typeset
