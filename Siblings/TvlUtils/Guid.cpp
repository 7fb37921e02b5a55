#include "siblings/TvlUtils/Guid.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <random>
#include <string_view>

namespace TvlUtils {

namespace {
std::mt19937_64& Random()
{
    static thread_local std::mt19937_64 random = [] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }();
    return random;
}

/// Writes the low `digits` hexadecimal digits of a number and returns the place behind them.
wchar_t* WriteHex(wchar_t* place, unsigned long long value, int digits)
{
    for (int i = digits - 1; i >= 0; --i)
        *place++ = L"0123456789abcdef"[value >> (4 * i) & 15];
    return place;
}

std::optional<unsigned> HexDigit(wchar_t c)
{
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    const wchar_t small = c | 0x20;
    return small >= L'a' && small <= L'f' ? std::optional<unsigned>(small - L'a' + 10) : std::nullopt;
}

/// The 16 bytes of a GUID's text in the order of its digits.
std::optional<std::array<unsigned char, 16>> ReadBytes(std::wstring_view text)
{
    if (text.size() == 38 && text.front() == L'{' && text.back() == L'}')
        text = text.substr(1, 36);
    if (text.size() != 36)
        return std::nullopt;
    std::array<unsigned char, 16> bytes{};
    std::size_t digits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isHyphen = i == 8 || i == 13 || i == 18 || i == 23;
        const auto digit = HexDigit(text[i]);
        if (isHyphen ? text[i] != L'-' : !digit)
            return std::nullopt;
        if (!isHyphen) {
            bytes[digits / 2] = static_cast<unsigned char>(bytes[digits / 2] * 16 + *digit);
            ++digits;
        }
    }
    return bytes;
}
}   // namespace

Guid::Guid(const TvlString& text)
{
    const auto bytes = ReadBytes(text);
    if (!bytes)
        return;
    const auto& b = *bytes;
    m_value.Data1 = unsigned{b[0]} << 24 | unsigned{b[1]} << 16 | unsigned{b[2]} << 8 | b[3];
    m_value.Data2 = static_cast<unsigned short>(b[4] << 8 | b[5]);
    m_value.Data3 = static_cast<unsigned short>(b[6] << 8 | b[7]);
    std::copy(b.begin() + 8, b.end(), m_value.Data4);
}

bool Guid::operator==(const Guid& other) const { return std::memcmp(&m_value, &other.m_value, sizeof m_value) == 0; }

Guid Guid::Generate()
{
    const unsigned long long words[] = {Random()(), Random()()};
    GUID value;
    static_assert(sizeof value == sizeof words);
    std::memcpy(&value, words, sizeof value);
    value.Data3 = static_cast<unsigned short>((value.Data3 & 0x0FFF) | 0x4000);
    value.Data4[0] = static_cast<unsigned char>((value.Data4[0] & 0x3F) | 0x80);
    return Guid(value);
}

TvlString Guid::ToString() const
{
    std::wstring text(36, L'-');
    wchar_t* const begin = text.data();
    WriteHex(begin, m_value.Data1, 8);
    WriteHex(begin + 9, m_value.Data2, 4);
    WriteHex(begin + 14, m_value.Data3, 4);
    WriteHex(begin + 19, m_value.Data4[0] * 256u + m_value.Data4[1], 4);
    wchar_t* place = begin + 24;
    for (int i = 2; i < 8; ++i)
        place = WriteHex(place, m_value.Data4[i], 2);
    return text;
}

}   // namespace TvlUtils
