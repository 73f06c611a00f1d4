#include "formats/pdf/typeset/pages/flow.h"

namespace scrivalen::typeset {

void Flow::beginPage() {
  pages_.begin(shape_);
  y_ = shape_.top;
  gap_ = 0;
  isAtTop_ = true;
}

Length Flow::room() const { return isAtTop() ? shape_.textHeight() : shape_.textBottom() - y_ - gap_; }

Length Flow::take(Length height, std::size_t backdrops, bool isMirrored) {
  if (pages_.isOpen() && !isAtTop_ && height > room()) {
    endPage();
  }
  if (!pages_.isOpen()) {
    beginPage();
  }
  const Length top = y_ + (isAtTop_ ? 0 : gap_);
  gap_ = 0;
  isAtTop_ = false;
  y_ = top + height;
  for (std::size_t i = 0; i < backdrops; ++i) {
    OpenBackdrop& open = backdrops_[i];
    open.isMirrored = open.top ? open.isMirrored : isMirrored;
    open.top = open.top.value_or(top);
  }
  placeMarks(pages_.placeAt(top));
  return top;
}

void Flow::placeMarks(const Place& place) {
  for (const std::string& name : marks_) {
    places_.add(name, place);
  }
  marks_.clear();
}

void Flow::markEnd() {
  if (pages_.isOpen()) {
    placeMarks(pages_.placeAt(y_));
  } else if (end_.page != 0) {
    placeMarks(end_);
  }
}

void Flow::keepTogether(Length height) {
  if (!isAtTop() && height > room() && height <= shape_.textHeight()) {
    endPage();
  }
}

void Flow::endPage() {
  if (!pages_.isOpen()) {
    return;
  }
  for (OpenBackdrop& open : backdrops_) {
    draw(open);
  }
  end_ = pages_.placeAt(y_);
  pages_.end();
}

void Flow::turn(bool isTurned) {
  endPage();
  shape_ = isTurned ? usual_.turned() : usual_;
}

void Flow::draw(OpenBackdrop& open) {
  if (open.top) {
    const Backdrop& backdrop = open.backdrop;
    const Length left = open.isMirrored ? mirrored(backdrop.left, backdrop.width) : backdrop.left;
    pages_.canvas().area(left, *open.top, backdrop.width, y_ - *open.top, backdrop.color);
    open.top.reset();
  }
}

void Flow::endBackdrop() {
  draw(backdrops_.back());
  backdrops_.pop_back();
}

}  // namespace scrivalen::typeset
