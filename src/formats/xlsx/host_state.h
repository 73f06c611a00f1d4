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

/// While it lives, a C library may open files and draw random numbers without the host's noticing. Where the host has
/// closed its standard streams, their descriptors are taken, so that no file of the library's gets one of them and what
/// is printed there ends up in that file. And numbers are drawn from a state of its own: a library that seeds them
/// would change those that the host draws.
class HostState {
 public:
  HostState();
  HostState(const HostState&) = delete;
  HostState& operator=(const HostState&) = delete;
  ~HostState();

 private:
  static constexpr int kStandardStreams = 3;
  static constexpr unsigned kRandomState = 64;  // bytes

  bool isTaken_[kStandardStreams] = {};
  char randomState_[kRandomState] = {};
  char* hostsRandomState_ = nullptr;
};

}  // namespace scrivalen
