#pragma once

#include "text/replaced_all.h"
#include "text/utf.h"

#include <string>
#include <string_view>

namespace scrivalen::command {

using platform::replacedAll;
using platform::toUtf8;
using platform::toWide;

/// The system's reason for the last call of the platform layer that failed.
std::string lastErrorText();

}  // namespace scrivalen::command
