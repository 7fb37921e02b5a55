// Numbers in the text of an expression, on views. Separators of 0 stand for none.
#pragma once

#include <string_view>

/// Length of the number at the front, or 0.
int MatchValue(std::wstring_view text, wchar_t decimalSeparator);
/// Length of the fraction at the front, or 0.
int MatchFraction(std::wstring_view text, wchar_t divide);
double ValueOf(std::wstring_view text, wchar_t decimalSeparator);
double FractionOf(std::wstring_view text, wchar_t divide, wchar_t decimalSeparator);
/// First character of the user's decimal separator.
wchar_t DecimalSeparator();
/// First character of the user's list separator.
wchar_t ListSeparator();
