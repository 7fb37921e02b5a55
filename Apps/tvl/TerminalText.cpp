#include "TerminalText.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace {
struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

// Blocks that are wide or full-width throughout, or nearly so (Unicode Standard Annex #11). Where characters are
// 16 bits, those above are two halves, which take a column each.
constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xA960, 0xA97F}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},
    {0xFE30, 0xFE6F}, {0xFF01, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD}};

std::size_t ColumnsOf(wchar_t character)
{
    const auto code = static_cast<std::uint32_t>(character);
    const bool isWide = std::any_of(std::begin(kWide), std::end(kWide),
        [code](const Range& range) { return code >= range.first && code <= range.last; });
    return isWide ? 2 : 1;
}

/// Whether the character is the first half of one that takes two.
bool IsFirstHalf(wchar_t character)
{
    const auto code = static_cast<std::uint32_t>(character);
    return sizeof(wchar_t) == 2 && code >= 0xD800 && code <= 0xDBFF;
}
}   // namespace

std::size_t ColumnsOf(const std::wstring& line)
{
    std::size_t columns = 0;
    for (const wchar_t character : line)
        columns += ColumnsOf(character);
    return columns;
}

std::wstring PaddedToColumns(std::wstring line, std::size_t columns)
{
    const std::size_t taken = ColumnsOf(line);
    line.append(columns - std::min(columns, taken), L' ');
    return line;
}

std::wstring CutToColumns(const std::wstring& line, std::size_t columns)
{
    std::size_t length = 0;
    for (std::size_t taken = 0; length < line.size(); ++length) {
        taken += ColumnsOf(line[length]);
        if (taken > columns)
            break;
    }
    if (length < line.size() && length > 0 && IsFirstHalf(line[length - 1]))
        --length;
    return line.substr(0, length);
}
