#pragma once

#include "text/replaced_all.h"
#include "text/utf.h"

#include <string>
#include <string_view>

namespace scrivalen::command {

using scrivalen::replacedAll;
using scrivalen::toUtf8;
using scrivalen::toWide;

/// The message for an output that cannot be written.
/// @param reason  without it the message ends with the name
std::string cannotWrite(std::string_view name, std::string_view reason = {});

/// The system's text for its last error.
std::string lastErrorText();

}  // namespace scrivalen::command
