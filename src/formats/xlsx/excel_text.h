#pragma once

#include "text/loss_counter.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen {

/// The text of a cell as a spreadsheet file has it: UTF-8, cut where the text is longer than a cell may be. U+FFFE,
/// U+FFFF and lone surrogates, which XML forbids, become U+FFFD. Control characters stay, libxlsxwriter escapes them as
/// `_x0001_` (ECMA-376, 22.9.2.19); text that looks like such an escape is kept from being read as one here.
class ExcelText {
 public:
  void assign(const wchar_t* text);

  bool isEmpty() const { return utf8_.empty(); }
  /// Whether the text was longer than a cell may be.
  bool isCut() const { return isCut_; }
  /// How many columns of letters the longest line takes.
  std::size_t width() const { return width_; }
  const char* c_str() const { return utf8_.c_str(); }
  /// The characters of all texts so far that are not what they were.
  const LossCounter& loss() const { return loss_; }

 private:
  void appendRest(std::wstring_view rest);
  void escapeEscapes();

  std::string utf8_;
  std::size_t width_ = 0;
  bool isCut_ = false;
  LossCounter loss_;
};

}  // namespace scrivalen
