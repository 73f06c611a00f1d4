#pragma once

#include <string>

namespace scrivalen::platform {

/// While it lives, the C library formats numbers and classifies characters in this thread as programs in C find them at
/// their start, whatever locale the host has set. Other threads do not see it.
class CLocale {
 public:
  CLocale();
  CLocale(const CLocale&) = delete;
  CLocale& operator=(const CLocale&) = delete;
  ~CLocale();

 private:
  void* before_ = nullptr;  // the system's handle of the thread's locale, where there is one
  int mode_ = 0;
  std::string name_;  // of the locale, where it has no handle
};

}  // namespace scrivalen::platform
