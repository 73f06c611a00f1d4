#include "system/code_page.h"

#include "system/windows_api.h"
#include "text/utf.h"

namespace scrivalen {
namespace {

// A system set to UTF-8 has no ANSI code page; documents say "ansi", which is Windows-1252.
UINT codePage() {
  constexpr UINT kWestern = 1252;
  const UINT page = GetACP();
  return page == CP_UTF8 ? kWestern : page;
}

struct Converted {
  int size = 0;
  bool lossless = false;
};

Converted convert(const wchar_t* text, int length, char* out, int capacity) {
  BOOL replaced = FALSE;
  const int size = WideCharToMultiByte(codePage(), WC_NO_BEST_FIT_CHARS, text, length, out, capacity, "?", &replaced);
  return {size, !replaced};
}

}  // namespace

// Converts one character at a time: otherwise a lone surrogate, a pair and an unknown letter would not each become one
// "?" per code unit, and could not be counted.
std::optional<std::size_t> toCodePage(std::wstring_view text, char* out, std::size_t capacity, LossCounter& loss) {
  std::size_t size = 0;
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    const char32_t c = nextCharacter(at, end);
    char bytes[8] = {'?', '?'};
    std::size_t width = c > 0xFFFF ? 2 : 1;
    if (c < 0x80) {
      bytes[0] = static_cast<char>(c);
    } else {
      const auto unit = static_cast<wchar_t>(c);
      const Converted result = c > 0xFFFF ? Converted{} : convert(&unit, 1, bytes, sizeof bytes);
      if (result.lossless && result.size > 0) {
        width = static_cast<std::size_t>(result.size);
      } else {
        bytes[0] = '?';
        loss.note(c);
      }
    }
    if (capacity - size < width) {
      return std::nullopt;
    }
    for (std::size_t i = 0; i < width; ++i) {
      out[size++] = bytes[i];
    }
  }
  return size;
}

bool isInCodePage(std::wstring_view text) {
  LossCounter loss;
  for (const wchar_t c : text) {
    char bytes[8];
    toCodePage({&c, 1}, bytes, sizeof bytes, loss);
  }
  return loss.count() == 0;
}

}  // namespace scrivalen
