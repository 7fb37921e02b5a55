// The user's separators, as the measure texts need them on every call. Usable before anything was read.
#pragma once

#include <string_view>

/// A separator or sign of up to 3 characters.
struct ShortSetting {
    static constexpr int kCapacity = 4;   // end mark included

    wchar_t text[kCapacity];
    int length;

    std::wstring_view View() const { return {text, static_cast<std::size_t>(length)}; }
};

/// Four settings of the user's locale. For the user interface thread.
struct LocaleCache {
    ShortSetting listSeparator{L",", 1};
    ShortSetting decimalSeparator{L".", 1};
    ShortSetting negativeSign{L"-", 1};
    bool leadingZero = true;   // whether "0.5" is written with its zero
};

const LocaleCache& CurrentLocaleCache();
/// Reads the four settings, unless they are known not to have changed; false at the first that can't be read or is longer than 3 characters, with those read
/// before it changed.
bool FillLocaleCache();
