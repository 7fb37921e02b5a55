#include "GuidText.h"

#include <cstdio>

namespace {
constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
constexpr int kDigits = 32;

int DigitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char small = static_cast<char>(c | 0x20);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

/// The number that the next `count` digits give.
unsigned long Take(const int*& digits, int count)
{
    unsigned long value = 0;
    for (; count > 0; --count)
        value = value * 16 + static_cast<unsigned>(*digits++);
    return value;
}
}   // namespace

std::optional<GUID> ParseGuid(std::string_view text)
{
    if (text.size() == kForm.size() + 2 && text.front() == '{' && text.back() == '}')
        text = text.substr(1, kForm.size());
    if (text.size() != kForm.size())
        return std::nullopt;
    int digits[kDigits];
    int count = 0;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        if (kForm[i] == '-' ? text[i] != '-' : DigitValue(text[i]) < 0)
            return std::nullopt;
        if (kForm[i] != '-')
            digits[count++] = DigitValue(text[i]);
    }
    const int* next = digits;
    GUID guid{};
    guid.Data1 = static_cast<std::uint32_t>(Take(next, 8));
    guid.Data2 = static_cast<std::uint16_t>(Take(next, 4));
    guid.Data3 = static_cast<std::uint16_t>(Take(next, 4));
    for (auto& byte : guid.Data4)
        byte = static_cast<std::uint8_t>(Take(next, 2));
    return guid;
}

std::string FormatGuid(const GUID& guid)
{
    char text[kForm.size() + 1];
    std::snprintf(text, sizeof text, "%08lx-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x",
        static_cast<unsigned long>(guid.Data1), guid.Data2, guid.Data3, guid.Data4[0], guid.Data4[1], guid.Data4[2],
        guid.Data4[3], guid.Data4[4], guid.Data4[5], guid.Data4[6], guid.Data4[7]);
    return text;
}
