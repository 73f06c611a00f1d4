#pragma once

#include <cstdint>
#include <string>

namespace scrivalen {

/// Sets this thread's locale to "C" while it exists, whatever locale the host has set. Other threads are not affected.
class CLocale {
 public:
  CLocale();
  CLocale(const CLocale&) = delete;
  CLocale& operator=(const CLocale&) = delete;
  ~CLocale();

 private:
  std::intptr_t before_ = 0;  // what the system needs to restore the thread's locale
  std::string name_;          // of that locale, where it is restored by name
};

/// While it exists, a C library may open files and seed random numbers without affecting the host. If the host has
/// closed its standard streams, their descriptors are occupied, so that no file of the library gets one and receives
/// what is printed there. Random numbers come from a separate state, so that seeding does not change the host's.
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
