#include "formats/xlsx/c_locale.h"

#include <locale.h>

namespace scrivalen {
namespace {

locale_t cLocale() {
  static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
  return locale;
}

}  // namespace

CLocale::CLocale() : before_(reinterpret_cast<std::intptr_t>(::uselocale(cLocale()))) {}

CLocale::~CLocale() { ::uselocale(reinterpret_cast<locale_t>(before_)); }

}  // namespace scrivalen
