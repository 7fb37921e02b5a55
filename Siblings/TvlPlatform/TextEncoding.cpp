#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <type_traits>

namespace TvlPlatform {

namespace {
constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsSurrogate(char32_t c) { return c >= 0xD800 && c < 0xE000; }
constexpr bool IsHigh(char32_t c) { return c >= 0xD800 && c < 0xDC00; }
constexpr bool IsLow(char32_t c) { return c >= 0xDC00 && c < 0xE000; }
constexpr char32_t Join(char32_t high, char32_t low) { return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00); }

/// Number of ASCII characters that a text begins with. Most texts are nothing else, so it goes block by block.
template <class Text>
std::size_t AsciiLength(const Text& text)
{
    using Unsigned = std::make_unsigned_t<typename Text::value_type>;
    constexpr std::size_t kBlock = 16;
    std::size_t length = 0;
    for (; length + kBlock <= text.size(); length += kBlock) {
        Unsigned all = 0;
        for (std::size_t i = 0; i < kBlock; ++i)
            all = static_cast<Unsigned>(all | static_cast<Unsigned>(text[length + i]));
        if (all >= 0x80)
            break;
    }
    while (length < text.size() && static_cast<Unsigned>(text[length]) < 0x80)
        ++length;
    return length;
}

/// Calls `take` with each code point of a text in UTF-16 or UTF-32 units.
template <class Units, class Take>
void ForEachCodePoint(const Units& units, std::size_t count, Take take)
{
    for (std::size_t i = 0; i < count; ++i) {
        char32_t c = static_cast<char32_t>(units(i));
        if (IsHigh(c) && i + 1 < count && IsLow(static_cast<char32_t>(units(i + 1))))
            c = Join(c, static_cast<char32_t>(units(++i)));
        take(IsSurrogate(c) || c > 0x10FFFF ? kReplacement : c);
    }
}

char32_t Unit(wchar_t c) { return static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(c)); }

void AppendWide(std::wstring& text, char32_t c)
{
    if (sizeof(wchar_t) == 2 && c >= 0x10000) {
        text += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
        text += static_cast<wchar_t>(c);
    }
}

void AppendUtf8(std::string& bytes, char32_t c)
{
    const auto add = [&](char32_t byte) { bytes += static_cast<char>(byte); };
    const auto tail = [&](int shift) { add(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80)
        return add(c);
    if (c < 0x800) {
        add(0xC0 | (c >> 6));
    } else if (c < 0x10000) {
        add(0xE0 | (c >> 12));
        tail(6);
    } else {
        add(0xF0 | (c >> 18));
        tail(12);
        tail(6);
    }
    tail(0);
}

/// Length of the sequence that a lead byte begins; 0 for a byte that begins none.
std::size_t SequenceLength(unsigned char lead)
{
    return lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
}

/// Decodes the sequence at the front; stores its code point and returns its length, or 0 when it is not valid.
std::size_t DecodeUtf8(std::string_view bytes, char32_t& c)
{
    static constexpr unsigned char kLeadMask[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    static constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<unsigned char>(bytes[0]);
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || length > bytes.size())
        return 0;
    c = lead & kLeadMask[length];
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if ((byte & 0xC0) != 0x80)
            return 0;
        c = (c << 6) | (byte & 0x3F);
    }
    return c < kLeast[length] || c > 0x10FFFF || IsSurrogate(c) ? 0 : length;
}
}   // namespace

std::string ToUtf8(std::wstring_view text)
{
    const std::size_t plain = AsciiLength(text);
    std::string bytes(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(plain));
    if (plain == text.size())
        return bytes;
    text.remove_prefix(plain);
    bytes.reserve(plain + 2 * text.size());
    ForEachCodePoint(
        [&](std::size_t i) { return Unit(text[i]); }, text.size(), [&](char32_t c) { AppendUtf8(bytes, c); });
    return bytes;
}

std::wstring FromUtf8(std::string_view bytes)
{
    const std::size_t plain = AsciiLength(bytes);
    std::wstring text(plain, L'\0');
    for (std::size_t i = 0; i < plain; ++i)
        text[i] = static_cast<wchar_t>(bytes[i]);
    if (plain == bytes.size())
        return text;
    text.reserve(bytes.size());
    bytes.remove_prefix(plain);
    while (!bytes.empty()) {
        char32_t c = kReplacement;
        const std::size_t length = DecodeUtf8(bytes, c);
        AppendWide(text, length ? c : kReplacement);
        bytes.remove_prefix(length ? length : 1);
    }
    return text;
}

std::vector<std::uint8_t> ToUtf16Le(std::wstring_view text)
{
    const std::size_t plain = AsciiLength(text);
    std::vector<std::uint8_t> bytes(plain * 2);
    for (std::size_t i = 0; i < plain; ++i)
        bytes[2 * i] = static_cast<std::uint8_t>(text[i]);
    if (plain == text.size())
        return bytes;
    bytes.reserve(text.size() * 2);
    text.remove_prefix(plain);
    const auto add = [&](char32_t unit) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    };
    ForEachCodePoint([&](std::size_t i) { return Unit(text[i]); }, text.size(),
        [&](char32_t c) {
            if (c < 0x10000)
                return add(c);
            add(0xD800 + ((c - 0x10000) >> 10));
            add(0xDC00 + ((c - 0x10000) & 0x3FF));
        });
    return bytes;
}

std::wstring FromUtf16Le(const void* bytes, std::size_t size)
{
    const auto* const data = static_cast<const std::uint8_t*>(bytes);
    std::wstring text;
    text.reserve(size / 2);
    const auto unit = [&](std::size_t i) { return static_cast<char32_t>(data[2 * i] | data[2 * i + 1] << 8); };
    ForEachCodePoint(unit, size / 2, [&](char32_t c) { AppendWide(text, c); });
    return text;
}

}   // namespace TvlPlatform
