#include "system/code_page.h"

#include "text/plain_text.h"
#include "text/utf.h"
#include "text/windows_1252.h"

#include <algorithm>

namespace scrivalen {
namespace {

using PlainAscii = PlainBelow<char, 0x80>;

// Writes the character at `at` and moves past it. Returns the end of its bytes; null when they do not fit.
char* putCharacter(const wchar_t*& at, const wchar_t* end, char* out, const char* limit, LossCounter& loss) {
  const char32_t c = nextCharacter(at, end);
  const std::size_t width = unitsOf(c);
  if (limit - out < static_cast<std::ptrdiff_t>(width)) {
    return nullptr;
  }
  const auto byte = toWindows1252(c);
  if (!byte) {
    loss.note(c);
  }
  return std::fill_n(out, width, static_cast<char>(byte.value_or('?')));
}

// Returns the end of the bytes; null when they do not fit.
char* putText(std::wstring_view text, char* out, const char* limit, LossCounter& loss) {
  const wchar_t* const end = text.data() + text.size();
  transcode(
      text.data(), end,
      [&](const wchar_t* at, std::size_t length) {
        const std::size_t plain =
            copyPlainBlocks<PlainAscii>(at, std::min(length, static_cast<std::size_t>(limit - out)), out);
        out += plain;
        return plain;
      },
      [&](const wchar_t*& at) {
        if (out != limit && PlainAscii::isPlain(characterValue(*at))) {
          *out++ = static_cast<char>(*at++);
        } else {
          out = putCharacter(at, end, out, limit, loss);
        }
        return out != nullptr;
      });
  return out;
}

}  // namespace

std::optional<std::size_t> toCodePage(std::wstring_view text, char* out, std::size_t capacity, LossCounter& loss) {
  char* const end = putText(text, out, out + capacity, loss);
  return end ? std::optional<std::size_t>(end - out) : std::nullopt;
}

bool isInCodePage(std::wstring_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](wchar_t c) { return toWindows1252(static_cast<char32_t>(c)).has_value(); });
}

}  // namespace scrivalen
