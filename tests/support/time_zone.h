#pragma once

namespace scrivalen::test {

/// Sets the time zone of the program for its lifetime, named as in POSIX: "JST-9".
class TimeZone {
 public:
  explicit TimeZone(const char* name) { set(name); }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;
  ~TimeZone() { set("UTC"); }

 private:
  static void set(const char* name);
};

}  // namespace scrivalen::test
