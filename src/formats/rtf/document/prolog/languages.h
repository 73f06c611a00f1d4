#pragma once

#include "text/ascii.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

namespace scrivalen::document::rtf {

inline constexpr int kEnglish = 1033;
inline constexpr int kNoLanguage = 1024;  ///< text whose spelling is not checked

struct Language {
  std::string_view tag;
  int number;
};

// RTF 1.9, "Language Support", and Windows' later identifiers. A tag without a region has its usual one. Sorted.
inline constexpr Language kLanguages[] = {
    {"af", 1078},    {"ar", 1025},     {"be", 1059},     {"bg", 1026},      {"bn", 1093},    {"bs", 5146},
    {"ca", 1027},    {"cs", 1029},     {"cy", 1106},     {"da", 1030},      {"de", 1031},    {"de-at", 3079},
    {"de-ch", 2055}, {"de-li", 5127},  {"de-lu", 4103},  {"el", 1032},      {"en", 1033},    {"en-au", 3081},
    {"en-ca", 4105}, {"en-gb", 2057},  {"en-ie", 6153},  {"en-in", 16393},  {"en-nz", 5129}, {"en-za", 7177},
    {"es", 3082},    {"es-ar", 11274}, {"es-cl", 13322}, {"es-co", 9226},   {"es-mx", 2058}, {"et", 1061},
    {"eu", 1069},    {"fa", 1065},     {"fi", 1035},     {"fr", 1036},      {"fr-be", 2060}, {"fr-ca", 3084},
    {"fr-ch", 4108}, {"fr-lu", 5132},  {"ga", 2108},     {"gl", 1110},      {"gu", 1095},    {"he", 1037},
    {"hi", 1081},    {"hr", 1050},     {"hu", 1038},     {"hy", 1067},      {"id", 1057},    {"is", 1039},
    {"it", 1040},    {"it-ch", 2064},  {"ja", 1041},     {"ka", 1079},      {"kk", 1087},    {"ko", 1042},
    {"lb", 1134},    {"lt", 1063},     {"lv", 1062},     {"mk", 1071},      {"mr", 1102},    {"ms", 1086},
    {"mt", 1082},    {"nb", 1044},     {"nl", 1043},     {"nl-be", 2067},   {"nn", 2068},    {"no", 1044},
    {"pl", 1045},    {"pt", 2070},     {"pt-br", 1046},  {"ro", 1048},      {"ru", 1049},    {"sk", 1051},
    {"sl", 1060},    {"sq", 1052},     {"sr", 10266},    {"sr-latn", 9242}, {"sv", 1053},    {"sv-fi", 2077},
    {"sw", 1089},    {"ta", 1097},     {"te", 1098},     {"th", 1054},      {"tr", 1055},    {"uk", 1058},
    {"ur", 1056},    {"vi", 1066},     {"zh", 2052},     {"zh-hant", 1028}, {"zh-hk", 3076}, {"zh-sg", 4100},
    {"zh-tw", 1028},
};

constexpr bool comesBefore(const Language& a, const Language& b) { return a.tag < b.tag; }
static_assert(std::is_sorted(std::begin(kLanguages), std::end(kLanguages), &comesBefore));

/// The number of the language of a tag (BCP 47), or of the longest known part of it; @p otherwise if there is none.
inline int languageNumber(std::string_view tag, int otherwise) {
  std::string known = asciiLowered(tag);
  while (!known.empty()) {
    const auto* const found =
        std::lower_bound(std::begin(kLanguages), std::end(kLanguages), Language{known, 0}, &comesBefore);
    if (found != std::end(kLanguages) && found->tag == known) {
      return found->number;
    }
    const std::size_t subtag = known.rfind('-');
    known.resize(subtag == std::string::npos ? 0 : subtag);
  }
  return otherwise;
}

}  // namespace scrivalen::document::rtf
