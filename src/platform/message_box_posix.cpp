#include "platform/message_box.h"

#include "platform/clog.h"
#include "platform/fmt.h"

namespace scrivalen::platform {

void showSystemMessageBox(const wchar_t* title, const wchar_t* text) { CLog::Bug2(FMT::Format(L"%s %s", title, text)); }

}  // namespace scrivalen::platform
