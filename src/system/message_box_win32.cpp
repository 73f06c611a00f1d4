#include "system/message_box.h"

#include "system/windows_api.h"

namespace scrivalen::platform {

void showSystemMessageBox(const wchar_t* title, const wchar_t* text) {
  MessageBoxW(nullptr, text, title, MB_OK | MB_ICONERROR | MB_TASKMODAL);
}

}  // namespace scrivalen::platform
