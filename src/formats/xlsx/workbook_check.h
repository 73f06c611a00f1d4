#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen {

/// Checks that a workbook is complete, without unpacking its sheets: each sheet must have the size that was written,
/// and every other part, all of which are small, must begin and end as XML does.
/// @param sheetSizes  the size of each sheet in bytes
/// @return the defect; empty when there is none
std::wstring workbookDefect(const std::wstring& path, const std::vector<std::uint64_t>& sheetSizes);

}  // namespace scrivalen
