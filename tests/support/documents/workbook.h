#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace scrivalen::test {

/// A spreadsheet file as text, read without the code that wrote it. Each sheet begins with its name in brackets and the
/// width of its columns; a line for each cell follows, with its text and formatting:
///
///     [Sheet1]
///     A 20.7
///     A1 "Total" bold Arial 12 color=FFFFFF fill=000080
///     B1 12.5 0.00
///
/// A number has no quotation marks; its format comes last.
/// Fails the test when the file cannot be read or its XML is not well-formed.
std::string readWorkbook(const std::wstring& path);

/// Only the cells, without names and widths.
std::string readCells(const std::wstring& path);

/// A part of the file, uncompressed.
std::string workbookPart(const std::wstring& path, std::string_view name);

/// The same, piece by piece, for parts too large for memory.
void readWorkbookPart(const std::wstring& path, std::string_view name,
                      const std::function<void(std::string_view)>& take);

}  // namespace scrivalen::test
