#include "writers/plain_text.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

std::wstring_view taskMarker(Task task) {
  switch (task) {
    case Task::Open: return L"[ ] ";
    case Task::Done: return L"[x] ";
    case Task::None: break;
  }
  return L"";
}

// Whether a link's text tells its address already, as that of <https://example.org> and <me@example.org> does.
bool tellsAddress(std::wstring_view text, std::wstring_view address) {
  for (const std::wstring_view silent : {L"", L"mailto:", L"http://", L"https://"}) {
    if (address.size() == silent.size() + text.size() && address.starts_with(silent) && address.ends_with(text)) {
      return true;
    }
  }
  return false;
}

bool isAsciiLetter(wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z'); }

}  // namespace

std::wstring ListMarkers::next(Task task, std::wstring_view bullet, std::wstring_view behind) {
  List& list = lists_.back();
  std::wstring marker(bullet);
  if (list.ordered) {
    marker = std::to_wstring(list.next++);
    marker += behind;
  }
  return marker.append(taskMarker(task));
}

std::wstring withAddress(std::wstring_view text, std::wstring_view address) {
  std::wstring result(text);
  if (address.empty() || address.starts_with(L'#') || tellsAddress(text, address)) {
    return result;
  }
  if (text.empty()) {
    return std::wstring(address);
  }
  return result.append(L" (").append(address).append(L")");
}

bool hasScheme(std::wstring_view address) {
  const std::size_t colon = address.find(L':');
  // A single letter is a drive.
  if (colon == std::wstring_view::npos || colon < 2 || !isAsciiLetter(address[0])) {
    return false;
  }
  return std::all_of(address.begin(), address.begin() + static_cast<std::ptrdiff_t>(colon), [](wchar_t c) {
    return isAsciiLetter(c) || (c >= L'0' && c <= L'9') || c == L'+' || c == L'-' || c == L'.';
  });
}

}  // namespace scrivalen::command
