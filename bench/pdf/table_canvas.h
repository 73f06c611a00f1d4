#pragma once

#include <string>
#include <string_view>

namespace scrivalen::bench {

/// Draws pages through a library for PDF. Lengths are in points, from the upper left corner.
class TableCanvas {
 public:
  virtual ~TableCanvas() = default;
  virtual void beginPage() = 0;
  virtual double widthOf(std::string_view utf8) = 0;
  virtual void text(double x, double baseline, std::string_view utf8) = 0;
  virtual void rule(double left, double top, double width) = 0;
};

inline constexpr double kPageWidth = 595.276;  // A4
inline constexpr double kPageHeight = 841.89;
inline constexpr double kMargin = 56.69;
inline constexpr double kTextSize = 9;

/// Draws the first rows of the ledger as the document interface sets them: 57 rows a page, numbers to the right, a rule
/// below each row. Each text is measured, as in any table whose texts may be too wide for their column.
/// @return whether each fits
bool drawLedger(TableCanvas& canvas, long rows);

inline constexpr const char* kTooWide = "a text is wider than its column";

/// Each writes the ledger into a compressed PDF. @return the reason of a failure; empty on success
std::string writeLedgerWithHaru(long rows, const std::string& file);
std::string writeLedgerWithCairo(long rows, const std::string& file);

}  // namespace scrivalen::bench
