#include "formats/xlsx/c_locale.h"

#include <locale.h>
#include <clocale>

namespace scrivalen {

// Most programs never leave the C locale, and then there is nothing to do.
CLocale::CLocale() {
  const std::string name = std::setlocale(LC_ALL, nullptr);
  if (name != "C") {
    name_ = name;
    before_ = ::_configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
    std::setlocale(LC_ALL, "C");
  }
}

CLocale::~CLocale() {
  if (!name_.empty()) {
    std::setlocale(LC_ALL, name_.c_str());
    ::_configthreadlocale(static_cast<int>(before_));
  }
}

}  // namespace scrivalen
