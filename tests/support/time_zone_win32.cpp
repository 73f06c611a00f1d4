#include "support/time_zone.h"

#include <cstdlib>
#include <ctime>

void scrivalen::test::TimeZone::set(const char* name) {
  ::_putenv_s("TZ", name);
  ::_tzset();
}
