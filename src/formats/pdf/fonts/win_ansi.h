#pragma once

#include "text/loss_counter.h"

#include <string>
#include <string_view>

namespace scrivalen::pdf {

/// Whether a character is a control character other than a line feed.
constexpr bool isControl(char32_t c) { return (c < 0x20 && c != U'\n') || (c >= 0x7F && c < 0xA0); }

/// Appends wide text as WinAnsi bytes (PDF 1.4, appendix D). A character missing in WinAnsi is replaced by a similar
/// one, or else by "?", and is counted. A tab becomes a blank; a carriage return is dropped.
void appendWinAnsi(std::string& out, std::wstring_view text, scrivalen::LossCounter& loss);

/// Appends wide text as UTF-16 code units.
void appendUtf16(std::u16string& out, std::wstring_view text);

}  // namespace scrivalen::pdf
