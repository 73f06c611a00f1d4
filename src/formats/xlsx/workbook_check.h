#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen {

/// Looks whether a workbook is whole, without unpacking its sheets: each sheet must be as large as what was written of
/// it, and every other part, all of which are small, must begin and end as XML does.
/// @param sheetSizes  the bytes of each sheet
/// @return what is wrong; empty when all is well
std::wstring workbookDefect(const std::wstring& path, const std::vector<std::uint64_t>& sheetSizes);

}  // namespace scrivalen
