#include "platform/c_locale.h"

#include <locale.h>

namespace scrivalen::platform {
namespace {

locale_t cLocale() {
  static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
  return locale;
}

}  // namespace

CLocale::CLocale() : before_(::uselocale(cLocale())) {}

CLocale::~CLocale() { ::uselocale(static_cast<locale_t>(before_)); }

}  // namespace scrivalen::platform
