// Text as it is written to a terminal.
#pragma once

#include <cstddef>
#include <string>

/// The text in one line: characters that would move the cursor, end the line or speak to the terminal become `mark`.
std::wstring OneLine(std::wstring text, wchar_t mark);
/// Columns that one line takes. Characters of East Asian scripts take two.
std::size_t ColumnsOf(const std::wstring& line);
/// As much of a line as fits.
std::wstring CutToColumns(const std::wstring& line, std::size_t columns);
