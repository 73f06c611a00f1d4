#pragma once

namespace scrivalen::test {

/// Lets the program live in another time zone for a while, named as POSIX does: "JST-9".
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
