#pragma once

#include <cstdint>
#include <string>

namespace scrivalen {

/// While it lives, the C library formats numbers and classifies characters in this thread as programs in C find them at
/// their start, whatever locale the host has set. Other threads do not see it.
class CLocale {
 public:
  CLocale();
  CLocale(const CLocale&) = delete;
  CLocale& operator=(const CLocale&) = delete;
  ~CLocale();

 private:
  std::intptr_t before_ = 0;  // what the system needs to have the thread's locale again
  std::string name_;          // of that locale, where it is known by its name
};

}  // namespace scrivalen
