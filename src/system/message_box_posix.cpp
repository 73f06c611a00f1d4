#include "system/message_box.h"

#include "output/clog.h"
#include "text/fmt.h"

namespace scrivalen::platform {

void showSystemMessageBox(const wchar_t* title, const wchar_t* text) { CLog::Bug2(FMT::Format(L"%s %s", title, text)); }

}  // namespace scrivalen::platform
