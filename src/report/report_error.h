#pragma once

#include "output/exception_barrier.h"
#include "output/file_error.h"
#include "scrivalen/report.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen {

/// The error text of a report and what the report lost because memory ran out. Both are fields of AReport, which its
/// members and its formats change through this class. Nothing here throws.
///
/// A lost setting makes every Open of the report fail; lost content makes the next Open or Close fail.
class ReportError {
 public:
  enum Lost : std::int32_t { kSetting = 1, kContent = 2, kText = 4 };

  /// @param text  the report's error text
  /// @param lost  a combination of Lost
  ReportError(std::wstring& text, std::int32_t& lost) : text_(&text), lost_(&lost) {}

  /// The error text to return; a fixed one when memory for it ran out.
  static const wchar_t* textOf(const std::wstring& text, std::int32_t lost);

  void set(std::wstring_view text) noexcept;
  /// Sets the message for a file error, or only the reason when memory runs out.
  void set(scrivalen::FileError error, std::wstring_view file, std::wstring_view reason) noexcept;

  /// Runs a part of a call that changes a setting, or of one that writes content. An exception is logged, and the
  /// setting or content counts as lost.
  /// @return false after an exception
  template <typename Action>
  bool keepSetting(Action&& action) noexcept {
    return keep(kSetting, action);
  }
  template <typename Action>
  bool keepContent(Action&& action) noexcept {
    return keep(kContent, action);
  }

  /// Runs an Open or Close. The text of an exception becomes the error text.
  template <typename Action>
  REPORT_ERRORS resultOf(Action&& action) noexcept {
    scrivalen::Reason raised;
    REPORT_ERRORS result = REPORT_FILE_ERROR;
    scrivalen::containedIn(raised, [&] { result = action(); });
    if (!raised.empty()) {
      set(raised.text());
    }
    return result;
  }

  /// Reports a loss: Open and Close call this and fail when it returns true.
  /// @param what  a combination of kSetting and kContent
  /// @return whether any of these was lost; the error text then says that memory ran out
  bool reportLoss(std::int32_t what = kSetting | kContent) noexcept;

  /// Forgets the losses, because the settings and content concerned are gone.
  void forgetLoss() noexcept { *lost_ &= kText; }

 private:
  template <typename Action>
  bool keep(Lost what, Action& action) noexcept {
    try {
      action();
      return true;
    } catch (...) {
      scrivalen::logException();
      lose(what);
      return false;
    }
  }

  void lose(Lost what) noexcept;

  std::wstring* text_;
  std::int32_t* lost_;
};

}  // namespace scrivalen
