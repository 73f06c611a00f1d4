#include "formats/pdf/layout/text_buffer.h"

#include "formats/pdf/fonts/win_ansi.h"
#include "formats/pdf/layout/line_breaking.h"
#include "text/plain_text.h"
#include "text/utf.h"

#include <algorithm>

namespace scrivalen::pdf {

LossCounter TextBuffer::append(std::wstring_view text) {
  if (!isWide_) {
    text.remove_prefix(appendPlain<PlainBelow<char, 0x100>>(bytes_, text));
  }
  return text.empty() ? LossCounter() : appendWide(text);
}

LossCounter TextBuffer::appendWinAnsi(std::wstring_view text) {
  LossCounter loss;
  pdf::appendWinAnsi(bytes_, text, loss);
  return loss;
}

LossCounter TextBuffer::appendWide(std::wstring_view text) {
  LossCounter loss;
  widen();
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    if (const char32_t c = nextCharacter(at, end); c > 0xFF) {
      loss.note(c);
    }
  }
  appendUtf16(units_, text);
  return loss;
}

LossCounter TextBuffer::appendSigns(std::wstring_view text) {
  LossCounter loss;
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    const char32_t c = nextCharacter(at, end);
    if (c > 0xFF) {
      loss.note(c);
      bytes_ += '?';
    } else if (c != U'\r') {
      bytes_ += c == U'\t' ? ' ' : static_cast<char>(c);
    }
  }
  return loss;
}

// ESC begins a language code (PDF 1.4, 3.8.1); the other control characters have no meaning.
LossCounter TextBuffer::appendTitle(std::wstring_view text) {
  LossCounter loss;
  std::wstring title(text);
  for (wchar_t& wide : title) {
    const auto c = static_cast<char32_t>(wide);
    if (isControl(c) && c != U'\t' && c != U'\r') {
      loss.note(c);
      wide = static_cast<wchar_t>(kReplacement);
    }
  }
  append(title);
  return loss;
}

void TextBuffer::clear() {
  isWide_ = false;
  bytes_.clear();
  units_.clear();
}

std::u16string TextBuffer::toUnits() const {
  if (isWide_) {
    return units_;
  }
  std::u16string units(bytes_.size(), u'\0');
  std::transform(bytes_.begin(), bytes_.end(), units.begin(), [](char byte) { return unitOf(byte); });
  return units;
}

void TextBuffer::widen() {
  if (!isWide_) {
    units_ = toUnits();
    bytes_.clear();
    isWide_ = true;
  }
}

}  // namespace scrivalen::pdf
