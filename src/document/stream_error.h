#pragma once

#include <string>

namespace scrivalen::document {

/// The English text for an errno value that a host's function returned: the same on every system, in no locale.
std::string streamErrorText(int error);

}  // namespace scrivalen::document
