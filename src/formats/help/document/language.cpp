#include "formats/help/document/language.h"

#include <algorithm>
#include <iterator>

namespace scrivalen::help {
namespace {

struct Charset {
  int codePage;
  std::string_view name;
};

// The WHATWG Encoding Standard (4.2) has these names.
constexpr Charset kCharsets[] = {{874, "windows-874"},    {932, "shift_jis"},     {936, "gb2312"},
                                 {949, "ks_c_5601-1987"}, {950, "big5"},          {1250, "windows-1250"},
                                 {1251, "windows-1251"},  {1252, "windows-1252"}, {1253, "windows-1253"},
                                 {1254, "windows-1254"},  {1255, "windows-1255"}, {1256, "windows-1256"},
                                 {1257, "windows-1257"},  {1258, "windows-1258"}};

}  // namespace

const WindowsLanguage& languageOf(std::string_view tag) {
  const WindowsLanguage* const language = windowsLanguageOf(tag);
  return language ? *language : *windowsLanguageOf("en");
}

std::string_view charsetOf(const WindowsLanguage& language) {
  const auto* const found = std::find_if(std::begin(kCharsets), std::end(kCharsets),
                                         [&](const Charset& one) { return one.codePage == language.codePage; });
  return found->name;
}

}  // namespace scrivalen::help
