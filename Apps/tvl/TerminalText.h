// Text as it is written to a terminal.
#pragma once

#include <cstddef>
#include <string>

/// Columns that one line takes. Characters of East Asian scripts take two.
std::size_t ColumnsOf(const std::wstring& line);
/// A line with blanks behind it up to a number of columns; a longer one as it is.
std::wstring PaddedToColumns(std::wstring line, std::size_t columns);
/// As much of a line as fits.
std::wstring CutToColumns(const std::wstring& line, std::size_t columns);
