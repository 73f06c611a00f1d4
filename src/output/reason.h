#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen {

/// The reason when memory ran out.
inline constexpr const wchar_t* kOutOfMemory = L"There is not enough memory";

/// Why something failed: of several reasons the first. It is kept in space of its own, because running out of memory is
/// a reason too; what is longer is cut.
class Reason {
 public:
  /// Keeps a reason unless there is one already. It need not be known: an empty one counts too.
  void keep(std::wstring_view reason) noexcept;
  /// Keeps what the exception tells that is being handled; for use in a catch clause.
  void keepRaised() noexcept;
  void clear() noexcept;

  bool empty() const noexcept { return size_ == 0; }
  std::wstring_view text() const noexcept { return {text_, size_}; }
  const wchar_t* c_str() const noexcept { return text_; }

 private:
  wchar_t text_[512] = {};
  std::size_t size_ = 0;
};

}  // namespace scrivalen
