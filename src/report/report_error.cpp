#include "report/report_error.h"

namespace scrivalen {

const wchar_t* ReportError::textOf(const std::wstring& text, std::int32_t lost) {
  return text.empty() && lost != 0 ? scrivalen::kOutOfMemory : text.c_str();
}

void ReportError::set(std::wstring_view text) noexcept {
  try {
    text_->assign(text);
    *lost_ &= ~kText;
  } catch (...) {
    lose(kText);
  }
}

void ReportError::set(scrivalen::FileError error, std::wstring_view file, std::wstring_view reason) noexcept {
  try {
    set(scrivalen::fileErrorText(error, file, reason));
  } catch (...) {
    set(reason);
  }
}

bool ReportError::reportLoss(std::int32_t what) noexcept {
  if ((*lost_ & what) == 0) {
    return false;
  }
  lose(kText);
  *lost_ &= ~kContent;
  return true;
}

void ReportError::lose(Lost what) noexcept {
  text_->clear();
  *lost_ |= what | kText;
}

}  // namespace scrivalen
