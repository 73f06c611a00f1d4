#include "formats/pdf/typeset/pages/flow.h"

namespace scrivalen::typeset {

void Flow::beginPage() {
  pages_.begin(shape_);
  y_ = shape_.top;
  gap_ = 0;
  isAtTop_ = true;
}

Length Flow::room() const { return isAtTop() ? shape_.textHeight() : shape_.textBottom() - y_ - gap_; }

Length Flow::take(Length height, std::size_t backdrops) {
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
    backdrops_[i].top = backdrops_[i].top.value_or(top);
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
    pages_.canvas().area(open.backdrop.left, *open.top, open.backdrop.width, y_ - *open.top, open.backdrop.color);
    open.top.reset();
  }
}

void Flow::endBackdrop() {
  draw(backdrops_.back());
  backdrops_.pop_back();
}

}  // namespace scrivalen::typeset
