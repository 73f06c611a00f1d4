#pragma once

#include "output/contain.h"
#include "output/file_error.h"
#include "scrivalen/report.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen {

/// The error text of a report and what the report lost because memory ran out. AReport keeps both in its fields; its
/// members and its formats change them through this. Nothing here raises.
///
/// A lost setting makes every Open of the report fail, lost content the next Open or Close.
class ReportError {
 public:
  enum Lost : std::int32_t { kSetting = 1, kContent = 2, kText = 4 };

  /// @param text  the report's error text
  /// @param lost  a combination of Lost
  ReportError(std::wstring& text, std::int32_t& lost) : text_(&text), lost_(&lost) {}

  /// The text to return for these fields; without memory for the error text a fixed one.
  static const wchar_t* textOf(const std::wstring& text, std::int32_t lost);

  void set(std::wstring_view text) noexcept;
  /// Sets the sentence on a file and the reason; without memory for it, the reason alone.
  void set(scrivalen::FileError error, std::wstring_view file, std::wstring_view reason) noexcept;

  /// Runs a part of a call that sets the report up, or of one that writes content. What it raises is logged, and the
  /// setting or content counts as lost.
  /// @return whether nothing was raised
  template <typename Action>
  bool keepSetting(Action&& action) noexcept {
    return keep(kSetting, action);
  }
  template <typename Action>
  bool keepContent(Action&& action) noexcept {
    return keep(kContent, action);
  }

  /// Runs an opening or closing. What it raises becomes the error text.
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

  /// Reports what was lost: an Open or Close asks this and fails when it is true.
  /// @param what  a combination of kSetting and kContent
  /// @return whether something of it was lost; the error text then says that memory ran out
  bool reportLoss(std::int32_t what = kSetting | kContent) noexcept;

  /// Forgets what was lost, because it belonged to something that is gone.
  void forgetLoss() noexcept { *lost_ &= kText; }

 private:
  template <typename Action>
  bool keep(Lost what, Action& action) noexcept {
    try {
      action();
      return true;
    } catch (...) {
      scrivalen::logRaised();
      lose(what);
      return false;
    }
  }

  void lose(Lost what) noexcept;

  std::wstring* text_;
  std::int32_t* lost_;
};

}  // namespace scrivalen
