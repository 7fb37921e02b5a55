// Numbers as measure texts write them.
#pragma once

#include "LocaleCache.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <cstddef>
#include <string_view>

/// 10 to the power `exponent`.
double PowerOfTen(unsigned exponent);

/// A text in place, cut at its room.
class ShortText {
public:
    static constexpr std::size_t kRoom = 49;   // what callers' buffers hold

    void Append(std::wstring_view text);
    std::wstring_view View() const { return {m_text, m_length}; }

private:
    std::size_t m_length = 0;
    wchar_t m_text[kRoom];
};

/// How a number is written.
struct NumberStyle {
    unsigned decimals = 0;   // more than 15 count as 15
    bool trim = false;       // zeros at the end are left away, down to one decimal
    bool regional = false;   // in the form of the user's region
};

/// A number, rounded: half of the last decimal is added to its size, and the rest cut off, so that the arithmetic decides
/// about halves (2.75 is 2.7). No sign for what becomes 0.
TvlString NumberText(double value, const NumberStyle& style, const LocaleCache& locale);

/// As NumberText, but a value between -1 and 1 keeps its first two digits.
TvlString PreciseNumberText(double value, const NumberStyle& style, const LocaleCache& locale);

/// A value as whole number and twelfths, with the list separator between: picas and points, ciceros and didots.
TvlString ChainText(double value, unsigned decimals, const LocaleCache& locale);
