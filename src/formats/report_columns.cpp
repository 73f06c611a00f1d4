#include "formats/report_columns.h"

#include <algorithm>
#include <iterator>

namespace scrivalen {
namespace {

using document::ValueType;

constexpr double kWhole = 100;  // per cent
constexpr std::size_t kMostDescribedColumns = 16384;

}  // namespace

void ReportColumns::beginTable() {
  isFirstRow_ = true;
  widths_.clear();
  isNamed_.clear();
}

void ReportColumns::note(const Attributes& attributes, const std::string& name) {
  const std::size_t column = column_;
  if (column >= kMostDescribedColumns) {
    return;
  }
  document::Column description;
  if (!name.empty() && (column >= isNamed_.size() || !isNamed_[column])) {
    isNamed_.resize(std::max(isNamed_.size(), column + 1));
    isNamed_[column] = true;
    description.name = name;
  }
  if (isFirstRow_) {
    description.type = attributes.type;
    widths_.resize(column + 1);
    widths_[column] = attributes.span == 1 ? attributes.width : ColumnWidth();
  }
  if (!description.name.empty() || description.type != ValueType::Auto) {
    document_.describeColumn(column, description);
  }
}

void ReportColumns::endRow() {
  if (isFirstRow_) {
    isFirstRow_ = false;
    describeWidths();
  }
}

// Columns without a share of the whole divide what the others leave. Lengths are shares only if all columns have one.
void ReportColumns::describeWidths() {
  using Unit = ColumnWidth::Unit;
  if (column_ > kMostDescribedColumns) {
    return;
  }
  widths_.resize(column_);
  const auto countOf = [this](Unit unit) {
    return std::count_if(widths_.begin(), widths_.end(), [unit](const ColumnWidth& w) { return w.unit == unit; });
  };
  const auto shares = countOf(Unit::Percent);
  const bool areLengths = countOf(Unit::Points) == std::ssize(widths_);
  if (shares == 0 && !areLengths) {
    return;
  }
  double left = kWhole;
  for (const ColumnWidth& width : widths_) {
    left -= width.unit == Unit::Percent ? width.value : 0;
  }
  const double other = shares < std::ssize(widths_) ? left / static_cast<double>(std::ssize(widths_) - shares) : 0;
  for (std::size_t column = 0; column < widths_.size(); ++column) {
    const bool isGiven = areLengths || widths_[column].unit == Unit::Percent;
    document::Column description;
    description.width = std::max(0.0, isGiven ? widths_[column].value : other);
    document_.describeColumn(column, description);
  }
}

}  // namespace scrivalen
