#include "platform/message_box.h"

#include "platform/windows_api.h"

namespace scrivalen::platform {

void showSystemMessageBox(const wchar_t* title, const wchar_t* text) {
  MessageBoxW(nullptr, text, title, MB_OK | MB_ICONERROR | MB_TASKMODAL);
}

}  // namespace scrivalen::platform
