#include "support/comma_locale.h"

#include <clocale>

namespace scrivalen::test {

bool setDecimalComma() { return std::setlocale(LC_ALL, "German") != nullptr; }

}  // namespace scrivalen::test
