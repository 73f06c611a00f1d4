#pragma once

#include <locale>
#include <string>

namespace scrivalen::test {

/// For its lifetime the locales of the C and the C++ library have a decimal comma and grouped digits.
class DecimalComma {
 public:
  DecimalComma();
  DecimalComma(const DecimalComma&) = delete;
  DecimalComma& operator=(const DecimalComma&) = delete;
  ~DecimalComma();

 private:
  std::string before_;
  std::locale beforeInCpp_;
};

}  // namespace scrivalen::test
