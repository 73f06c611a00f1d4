#include "support/decimal_comma.h"

#include "support/comma_locale.h"

#include <gtest/gtest.h>

#include <clocale>

namespace scrivalen::test {
namespace {

template <typename Character>
struct CommaNumbers : std::numpunct<Character> {
  Character do_decimal_point() const override { return ','; }
  Character do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

}  // namespace

DecimalComma::DecimalComma() : before_(std::setlocale(LC_ALL, nullptr)) {
  const std::locale narrow(std::locale(), new CommaNumbers<char>);
  beforeInCpp_ = std::locale::global(std::locale(narrow, new CommaNumbers<wchar_t>));
  EXPECT_TRUE(setDecimalComma());
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
}

DecimalComma::~DecimalComma() {
  std::locale::global(beforeInCpp_);
  std::setlocale(LC_ALL, before_.c_str());
}

}  // namespace scrivalen::test
