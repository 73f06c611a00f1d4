#include "texts.h"

#include "system/messages.h"
#include "text/utf.h"

namespace scrivalen::command {

std::string cannotWrite(std::string_view name, std::string_view reason) {
  std::string message = "cannot write '";
  message.append(name).append("'");
  return reason.empty() ? message : message.append(": ").append(reason);
}

std::string lastErrorText() { return toUtf8(scrivalen::systemErrorText(scrivalen::lastSystemError())); }

}  // namespace scrivalen::command
