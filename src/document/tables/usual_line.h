#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace scrivalen::document {

/// The width that the lines of a column usually have: the root of their mean square, in which long lines count for
/// more than short ones, as they fill more of a page. A line counts as @p most at most, so that not even a cell of a
/// whole chapter decides for a column of short ones.
class UsualLine {
 public:
  void add(double width, double most) {
    const double counted = std::min(width, most);
    squares_ += counted * counted;
    ++lines_;
  }
  /// 0 without any line.
  double width() const { return lines_ > 0 ? std::sqrt(squares_ / static_cast<double>(lines_)) : 0; }

 private:
  double squares_ = 0;
  std::size_t lines_ = 0;
};

}  // namespace scrivalen::document
