#include "texts.h"

#include "system/messages.h"
#include "text/utf.h"

namespace scrivalen::command {

std::string lastErrorText() { return toUtf8(scrivalen::systemErrorText(scrivalen::lastSystemError())); }

}  // namespace scrivalen::command
