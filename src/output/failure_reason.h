#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen {

/// The reason when memory ran out.
inline constexpr const wchar_t* kOutOfMemory = L"There is not enough memory";

/// Why something failed: the first of several reasons. The text is in the object itself, because one reason is that
/// memory ran out; a longer text is cut.
class Reason {
 public:
  /// Keeps a reason unless there is one already. An empty one counts as an unknown reason.
  void keep(std::wstring_view reason) noexcept;
  /// Keeps the text of the exception being handled; call it in a catch clause.
  void keepException() noexcept;
  void clear() noexcept;

  bool empty() const noexcept { return size_ == 0; }
  std::wstring_view text() const noexcept { return {text_, size_}; }
  const wchar_t* c_str() const noexcept { return text_; }

 private:
  wchar_t text_[512] = {};
  std::size_t size_ = 0;
};

}  // namespace scrivalen
