#pragma once

#include "text/loss_counter.h"

#include <string>
#include <string_view>

namespace scrivalen::pdf {

/// The text of an item while it is collected: UTF-16 code units, stored as bytes as long as none of them is above 255.
class TextBuffer {
 public:
  /// Appends wide text unchanged. @return the characters above 255
  scrivalen::LossCounter append(std::wstring_view text);
  /// Appends wide text as WinAnsi bytes. @return the characters missing in WinAnsi
  scrivalen::LossCounter appendWinAnsi(std::wstring_view text);
  /// Appends wide text as codes of a font with its own encoding. A tab becomes a blank; a carriage return is dropped;
  /// characters above 255 become "?". @return the characters above 255
  scrivalen::LossCounter appendSigns(std::wstring_view text);
  /// Appends wide text, with control characters other than tabs and line ends replaced by U+FFFD. @return the replaced
  /// characters
  scrivalen::LossCounter appendTitle(std::wstring_view text);

  void clear();
  bool isWide() const { return isWide_; }
  std::string_view bytes() const { return bytes_; }
  std::u16string_view units() const { return units_; }
  /// The text as UTF-16, however it is stored.
  std::u16string toUnits() const;

 private:
  scrivalen::LossCounter appendWide(std::wstring_view text);
  void widen();

  bool isWide_ = false;
  std::string bytes_;
  std::u16string units_;
};

}  // namespace scrivalen::pdf
