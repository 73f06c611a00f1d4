#include "writing/percent_encoding.h"

#include "text/ascii.h"

namespace scrivalen::command {

std::string percentDecoded(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const int high = text[at] == '%' && at + 2 < text.size() ? scrivalen::hexValue(text[at + 1]) : -1;
    const int low = high < 0 ? -1 : scrivalen::hexValue(text[at + 2]);
    if (low >= 0) {
      result += static_cast<char>(high * 16 + low);
      at += 2;
    } else {
      result += text[at];
    }
  }
  return result;
}

}  // namespace scrivalen::command
