#pragma once

#include "text/replaced_all.h"
#include "text/utf.h"

#include <string>
#include <string_view>

namespace scrivalen::command {

using scrivalen::replacedAll;
using scrivalen::toUtf8;
using scrivalen::toWide;

/// The system's text for its last error.
std::string lastErrorText();

}  // namespace scrivalen::command
