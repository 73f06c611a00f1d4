#pragma once

#include <cstdlib>
#include <ctime>

namespace scrivalen::test {

/// Lets the program live in another time zone for a while; for POSIX.
class TimeZone {
 public:
  explicit TimeZone(const char* name) { set(name); }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;
  ~TimeZone() { set("UTC"); }

 private:
  static void set(const char* name) {
    ::setenv("TZ", name, 1);
    ::tzset();
  }
};

}  // namespace scrivalen::test
