#include "text/languages/windows_language.h"

#include "text/ascii.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

namespace scrivalen {
namespace {

// The Windows Language Code Identifiers ([MS-LCID], 2.2) and the ANSI code pages of their locales; for a locale
// without one, 1252. A tag without a region has its usual one. Sorted; the tags are in lower case.
constexpr WindowsLanguage kLanguages[] = {
    {"af", 0x436, 1252, "Afrikaans"},
    {"ar", 0x401, 1256, "Arabic (Saudi Arabia)"},
    {"ar-ae", 0x3801, 1256, "Arabic (U.A.E.)"},
    {"ar-dz", 0x1401, 1256, "Arabic (Algeria)"},
    {"ar-eg", 0xC01, 1256, "Arabic (Egypt)"},
    {"ar-iq", 0x801, 1256, "Arabic (Iraq)"},
    {"ar-ma", 0x1801, 1256, "Arabic (Morocco)"},
    {"az", 0x42C, 1254, "Azeri (Latin)"},
    {"az-cyrl", 0x82C, 1251, "Azeri (Cyrillic)"},
    {"be", 0x423, 1251, "Belarusian"},
    {"bg", 0x402, 1251, "Bulgarian"},
    {"bn", 0x445, 1252, "Bengali (India)"},
    {"bn-bd", 0x845, 1252, "Bengali (Bangladesh)"},
    {"bs", 0x141A, 1250, "Bosnian (Latin)"},
    {"bs-cyrl", 0x201A, 1251, "Bosnian (Cyrillic)"},
    {"ca", 0x403, 1252, "Catalan"},
    {"cs", 0x405, 1250, "Czech"},
    {"cy", 0x452, 1252, "Welsh"},
    {"da", 0x406, 1252, "Danish"},
    {"de", 0x407, 1252, "German (Germany)"},
    {"de-at", 0xC07, 1252, "German (Austria)"},
    {"de-ch", 0x807, 1252, "German (Switzerland)"},
    {"de-li", 0x1407, 1252, "German (Liechtenstein)"},
    {"de-lu", 0x1007, 1252, "German (Luxembourg)"},
    {"el", 0x408, 1253, "Greek"},
    {"en", 0x409, 1252, "English (United States)"},
    {"en-au", 0xC09, 1252, "English (Australia)"},
    {"en-ca", 0x1009, 1252, "English (Canada)"},
    {"en-gb", 0x809, 1252, "English (United Kingdom)"},
    {"en-ie", 0x1809, 1252, "English (Ireland)"},
    {"en-in", 0x4009, 1252, "English (India)"},
    {"en-nz", 0x1409, 1252, "English (New Zealand)"},
    {"en-za", 0x1C09, 1252, "English (South Africa)"},
    {"es", 0xC0A, 1252, "Spanish (Spain)"},
    {"es-ar", 0x2C0A, 1252, "Spanish (Argentina)"},
    {"es-cl", 0x340A, 1252, "Spanish (Chile)"},
    {"es-co", 0x240A, 1252, "Spanish (Colombia)"},
    {"es-mx", 0x80A, 1252, "Spanish (Mexico)"},
    {"et", 0x425, 1257, "Estonian"},
    {"eu", 0x42D, 1252, "Basque"},
    {"fa", 0x429, 1256, "Farsi"},
    {"fi", 0x40B, 1252, "Finnish"},
    {"fo", 0x438, 1252, "Faroese"},
    {"fr", 0x40C, 1252, "French (France)"},
    {"fr-be", 0x80C, 1252, "French (Belgium)"},
    {"fr-ca", 0xC0C, 1252, "French (Canada)"},
    {"fr-ch", 0x100C, 1252, "French (Switzerland)"},
    {"fr-lu", 0x140C, 1252, "French (Luxembourg)"},
    {"ga", 0x83C, 1252, "Irish"},
    {"gl", 0x456, 1252, "Galician"},
    {"gu", 0x447, 1252, "Gujarati"},
    {"he", 0x40D, 1255, "Hebrew"},
    {"hi", 0x439, 1252, "Hindi"},
    {"hr", 0x41A, 1250, "Croatian"},
    {"hu", 0x40E, 1250, "Hungarian"},
    {"hy", 0x42B, 1252, "Armenian"},
    {"id", 0x421, 1252, "Indonesian"},
    {"in", 0x421, 1252, "Indonesian"},
    {"is", 0x40F, 1252, "Icelandic"},
    {"it", 0x410, 1252, "Italian (Italy)"},
    {"it-ch", 0x810, 1252, "Italian (Switzerland)"},
    {"iw", 0x40D, 1255, "Hebrew"},
    {"ja", 0x411, 932, "Japanese"},
    {"ka", 0x437, 1252, "Georgian"},
    {"kk", 0x43F, 1251, "Kazakh"},
    {"ko", 0x412, 949, "Korean"},
    {"ky", 0x440, 1251, "Kyrgyz"},
    {"lb", 0x46E, 1252, "Luxembourgish"},
    {"lt", 0x427, 1257, "Lithuanian"},
    {"lv", 0x426, 1257, "Latvian"},
    {"mk", 0x42F, 1251, "Macedonian"},
    {"mn", 0x450, 1251, "Mongolian"},
    {"mr", 0x44E, 1252, "Marathi"},
    {"ms", 0x43E, 1252, "Malay"},
    {"mt", 0x43A, 1252, "Maltese"},
    {"nb", 0x414, 1252, "Norwegian (Bokmal)"},
    {"nl", 0x413, 1252, "Dutch (Netherlands)"},
    {"nl-be", 0x813, 1252, "Dutch (Belgium)"},
    {"nn", 0x814, 1252, "Norwegian (Nynorsk)"},
    {"no", 0x414, 1252, "Norwegian (Bokmal)"},
    {"pl", 0x415, 1250, "Polish"},
    {"pt", 0x816, 1252, "Portuguese (Portugal)"},
    {"pt-br", 0x416, 1252, "Portuguese (Brazil)"},
    {"ro", 0x418, 1250, "Romanian"},
    {"ru", 0x419, 1251, "Russian"},
    {"sk", 0x41B, 1250, "Slovak"},
    {"sl", 0x424, 1250, "Slovenian"},
    {"sq", 0x41C, 1250, "Albanian"},
    {"sr", 0x281A, 1251, "Serbian (Cyrillic, Serbia)"},
    {"sr-latn", 0x241A, 1250, "Serbian (Latin, Serbia)"},
    {"sv", 0x41D, 1252, "Swedish (Sweden)"},
    {"sv-fi", 0x81D, 1252, "Swedish (Finland)"},
    {"sw", 0x441, 1252, "Swahili"},
    {"ta", 0x449, 1252, "Tamil"},
    {"te", 0x44A, 1252, "Telugu"},
    {"th", 0x41E, 874, "Thai"},
    {"tr", 0x41F, 1254, "Turkish"},
    {"tt", 0x444, 1251, "Tatar"},
    {"uk", 0x422, 1251, "Ukrainian"},
    {"ur", 0x420, 1256, "Urdu"},
    {"uz", 0x443, 1254, "Uzbek (Latin)"},
    {"uz-cyrl", 0x843, 1251, "Uzbek (Cyrillic)"},
    {"vi", 0x42A, 1258, "Vietnamese"},
    {"zh", 0x804, 936, "Chinese (PRC)"},
    {"zh-hant", 0x404, 950, "Chinese (Taiwan)"},
    {"zh-hk", 0xC04, 950, "Chinese (Hong Kong S.A.R.)"},
    {"zh-mo", 0x1404, 950, "Chinese (Macau S.A.R.)"},
    {"zh-sg", 0x1004, 936, "Chinese (Singapore)"},
    {"zh-tw", 0x404, 950, "Chinese (Taiwan)"},
};

constexpr bool comesBefore(const WindowsLanguage& a, const WindowsLanguage& b) { return a.tag < b.tag; }
static_assert(std::is_sorted(std::begin(kLanguages), std::end(kLanguages), &comesBefore));

const WindowsLanguage* languageOfTag(std::string_view tag) {
  const auto* const found =
      std::lower_bound(std::begin(kLanguages), std::end(kLanguages), WindowsLanguage{tag}, &comesBefore);
  return found == std::end(kLanguages) || found->tag != tag ? nullptr : found;
}

}  // namespace

const WindowsLanguage* windowsLanguageOf(std::string_view tag) {
  const std::string lowered = asciiLowered(tag);
  for (std::string_view rest = lowered; !rest.empty();) {
    if (const WindowsLanguage* const language = languageOfTag(rest)) {
      return language;
    }
    const std::size_t end = rest.rfind('-');
    rest = rest.substr(0, end == rest.npos ? 0 : end);
  }
  return nullptr;
}

}  // namespace scrivalen
