#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

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

/// The width that the words of a column have but for one cell in twenty, so that a few long words need not decide for
/// a long table.
class UsualWord {
 public:
  /// @param width  of the longest word of a cell
  void add(double width) { words_.push_back(width); }
  /// A word that counts however rare it is.
  void addHeader(double width) { header_ = std::max(header_, width); }
  /// 0 without any word. Sorts the words.
  double width() {
    if (words_.empty()) {
      return header_;
    }
    const std::size_t rare = words_.size() / 20;
    const auto usual = words_.end() - 1 - static_cast<std::ptrdiff_t>(rare);
    std::nth_element(words_.begin(), usual, words_.end());
    return std::max(*usual, header_);
  }

 private:
  std::vector<double> words_;
  double header_ = 0;
};

}  // namespace scrivalen::document
