#pragma once

#include "text/loss_counter.h"

#include <string>
#include <string_view>

namespace scrivalen::pdf {

/// The text of an item while it is written into: UTF-16 code units, kept as bytes as long as none of them is above 255.
class TextBuffer {
 public:
  /// Appends wide text as it stands. @return how many characters have more than a low byte, and the first of them
  scrivalen::LossCounter append(std::wstring_view text);
  /// Appends wide text as WinAnsi bytes. @return what WinAnsi lacks
  scrivalen::LossCounter appendWinAnsi(std::wstring_view text);
  /// Appends wide text as the bytes of a font with an encoding of its own, each as it is given; a tab is a blank, a
  /// carriage return is left out. @return how many characters are no byte, which become "?"
  scrivalen::LossCounter appendSigns(std::wstring_view text);
  /// Appends wide text as it stands, but for its control characters, which become U+FFFD. @return how many there were
  scrivalen::LossCounter appendTitle(std::wstring_view text);

  void clear();
  bool isWide() const { return isWide_; }
  std::string_view bytes() const { return bytes_; }
  std::u16string_view units() const { return units_; }
  /// The text as units, whichever way it is kept.
  std::u16string toUnits() const;

 private:
  scrivalen::LossCounter appendWide(std::wstring_view text);
  void widen();

  bool isWide_ = false;
  std::string bytes_;
  std::u16string units_;
};

}  // namespace scrivalen::pdf
