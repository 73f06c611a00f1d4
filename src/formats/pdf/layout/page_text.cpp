#include "formats/pdf/layout/page_text.h"

#include "formats/pdf/layout/line_breaking.h"
#include "formats/pdf/objects/piece.h"
#include "text/plain_text.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <utility>

namespace scrivalen::pdf {

namespace {

constexpr std::size_t kNumberSize = 20;
constexpr std::string_view kTextMatrix = "1 0 0 1 0 0 Tm\r\n";
constexpr std::string_view kLineEnd = "\r\n";

char* put(char* at, std::string_view words) {
  std::memcpy(at, words.data(), words.size());
  return at + words.size();
}

// Nearly all numbers on a page have at most three digits.
char* put(char* at, Points number) {
  if (number < 0 || number > 999) {
    return std::to_chars(at, at + kNumberSize, number).ptr;
  }
  const auto value = static_cast<unsigned>(number);
  if (value > 99) {
    *at++ = static_cast<char>('0' + value / 100);
  }
  if (value > 9) {
    *at++ = static_cast<char>('0' + value / 10 % 10);
  }
  *at++ = static_cast<char>('0' + value % 10);
  return at;
}

bool isEscaped(char16_t unit) { return unit == u'(' || unit == u')' || unit == u'\\'; }

// Copies the leading bytes of a text that need no escaping, eight at a time. @return how many bytes were copied
std::size_t putPlain(std::string_view text, char* at) {
  std::size_t done = 0;
  for (; text.size() - done >= kPlainBlock; done += kPlainBlock) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text.data() + done, sizeof bytes);
    const bool isAscii = (bytes & eightTimes(0x80)) == 0;
    if (!isAscii || !allMarked(differFrom(bytes, '(', 1) & differFrom(bytes, '\\'))) {
      break;
    }
    std::memcpy(at + done, &bytes, sizeof bytes);
  }
  return done;
}

std::size_t putPlain(std::u16string_view, char*) { return 0; }

template <typename View>
char* putEscaped(View text, char* at) {
  for (const auto unit : text) {
    if (isEscaped(unitOf(unit))) {
      *at++ = '\\';
    }
    *at++ = static_cast<char>(unit & 0xFF);
  }
  return at;
}

std::string stepDown(Points distance, PDFStuffer::Form form) {
  // The classic form writes a minus sign even before a negative number or zero.
  const bool signedTwice = distance <= 0 && form == PDFStuffer::Form::Classic;
  return signedTwice ? "0 -" + std::to_string(distance) + " Td\r\n" : "0 " + std::to_string(-distance) + " Td\r\n";
}

// NaN and negative zero also become 0.
double component(double value, PDFStuffer::Form form) {
  if (form == PDFStuffer::Form::Classic) {
    return value;
  }
  return value > 0 ? std::min(value, 1.0) : 0.0;
}

}  // namespace

DrawStyle::DrawStyle(const CPDFtextStyle& style, int resolvedFont, const CharWidths& charWidths, PDFStuffer::Form form)
    : lead(Points{2} * style.size / 3), height(Points{4} * style.size / 3), widths(charWidths) {
  const std::string down = stepDown(lead, form);
  segmentEnd = " Td\r\n" + down + "/F" + std::to_string(resolvedFont) + " " + std::to_string(style.size) + " Tf\r\n" +
               fillColor(style.color, form) + "\r\n(";
  lineEnd = ")Tj\r\n" + down;
}

std::string fillColor(const _RGB_COLOR& color, PDFStuffer::Form form) {
  const auto number = [form](double value) { return PDFStuffer::fixed(component(value, form), 6); };
  return number(color.red) + " " + number(color.green) + " " + number(color.blue) + " rg";
}

void PageText::line(std::string_view words) {
  if (keepsLines_) {
    endAt(put(put(reserve(words.size() + kLineEnd.size()), words), kLineEnd));
  }
}

void PageText::moveDown(Points y) {
  if (keepsLines_) {
    char* const begin = reserve(kTextMatrix.size() + kNumberSize + 8);
    endAt(put(put(put(put(begin, kTextMatrix), "0 "), y), " Td\r\n"));
  }
}

// The line ends with the opening parenthesis of the text, which showText closes.
void PageText::beginText(Points x, Points y, const DrawStyle& style) {
  if (keepsLines_) {
    char* at = put(reserve(kTextMatrix.size() + 2 * kNumberSize + style.segmentEnd.size()), kTextMatrix);
    at = put(put(put(at, x), " "), y);
    endAt(put(at, style.segmentEnd));
  }
}

void PageText::rectangle(Points x, std::string_view rest) {
  if (keepsLines_) {
    endAt(put(put(reserve(kNumberSize + rest.size()), x), rest));
  }
}

template <typename View>
void PageText::show(View text, const DrawStyle& style) {
  if (!keepsLines_) {
    return;
  }
  char* at = reserve(2 * text.size() + style.lineEnd.size());
  while (!text.empty()) {
    const std::size_t plain = putPlain(text, at);
    text.remove_prefix(plain);
    const View block = text.substr(0, kPlainBlock);
    at = putEscaped(block, at + plain);
    text.remove_prefix(block.size());
  }
  endAt(put(at, style.lineEnd));
}

template void PageText::show(std::string_view text, const DrawStyle& style);
template void PageText::show(std::u16string_view text, const DrawStyle& style);

char* PageText::reserve(std::size_t size) {
  if (capacity_ - size_ < size) {
    const std::size_t grown = std::max(2 * capacity_, size_ + size);
    auto bytes = std::make_unique_for_overwrite<char[]>(grown);
    if (size_ > 0) {
      std::memcpy(bytes.get(), bytes_.get(), size_);
    }
    bytes_ = std::move(bytes);
    capacity_ = grown;
  }
  return bytes_.get() + size_;
}

}  // namespace scrivalen::pdf
