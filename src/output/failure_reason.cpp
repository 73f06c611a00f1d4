#include "output/failure_reason.h"

#include "text/utf.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <new>

namespace scrivalen {

void Reason::keep(std::wstring_view reason) noexcept {
  if (!empty()) {
    return;
  }
  const std::wstring_view kept = reason.empty() ? L"The reason is not known" : reason;
  size_ = std::min(kept.size(), std::size(text_) - 1);
  *std::copy_n(kept.begin(), size_, text_) = L'\0';
}

void Reason::keepException() noexcept {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    keep(kOutOfMemory);
  } catch (const std::exception& raised) {
    try {
      keep(toWide(raised.what()));
    } catch (...) {
      keep({});
    }
  } catch (...) {
    keep({});
  }
}

void Reason::clear() noexcept {
  size_ = 0;
  text_[0] = L'\0';
}

}  // namespace scrivalen
