#pragma once

#include <locale>
#include <string>

namespace scrivalen::test {

/// While it lives, numbers have a decimal comma and grouped digits, in the C library's locale and in the C++ library's.
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
