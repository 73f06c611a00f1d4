#include "support/time_zone.h"

#include <cstdlib>
#include <ctime>

void scrivalen::test::TimeZone::set(const char* name) {
  ::setenv("TZ", name, 1);
  ::tzset();
}
