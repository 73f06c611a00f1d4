#pragma once

#include "text/replaced_all.h"
#include "text/utf.h"

#include <string>
#include <string_view>

namespace scrivalen::command {

using scrivalen::replacedAll;
using scrivalen::toUtf8;
using scrivalen::toWide;

/// The reason that the system gives for its last call that failed.
std::string lastErrorText();

}  // namespace scrivalen::command
