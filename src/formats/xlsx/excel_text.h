#pragma once

#include "text/loss_counter.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen {

/// A cell's text as a spreadsheet file has it: UTF-8, cut at the maximum length of a cell. U+FFFE, U+FFFF and lone
/// surrogates, which XML forbids, become U+FFFD. Control characters are escaped as `_x0001_` (ECMA-376, 22.9.2.19), and
/// so is text that looks like such an escape. Markup characters are not escaped.
class ExcelText {
 public:
  void assign(const wchar_t* text);

  bool isEmpty() const { return utf8_.empty(); }
  /// Whether the text was too long for a cell.
  bool isCut() const { return isCut_; }
  /// The width of the longest line in characters; wide ones count twice.
  std::size_t width() const { return width_; }
  const std::string& utf8() const { return utf8_; }
  /// The characters of all texts so far that were replaced.
  const LossCounter& loss() const { return loss_; }

 private:
  void appendRest(std::wstring_view rest);

  std::string utf8_;
  std::size_t width_ = 0;
  bool isCut_ = false;
  bool hasControls_ = false;
  LossCounter loss_;
};

}  // namespace scrivalen
