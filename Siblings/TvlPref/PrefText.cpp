#include "siblings/TvlPref/PrefText.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <cwchar>
#include <utility>

namespace TvlPref {

namespace {
TvlString EscapedElement(const TvlString& element)
{
    TvlString escaped = element;
    escaped.Replace(L"\\", L"\\\\");
    escaped.Replace(L"\n", L"\\n");
    return escaped + L'\n';
}

struct TextOf {
    TvlString operator()(bool value) const { return value ? L"1" : L"0"; }
    TvlString operator()(const TvlString& value) const { return value; }
    TvlString operator()(const std::vector<TvlString>& value) const
    {
        TvlString text;
        for (const TvlString& element : value)
            text += EscapedElement(element);
        return text;
    }
};

constexpr wchar_t kEncodedMark = L'>';
constexpr std::size_t kDigits = 4;   // of a unit

bool StandsForItself(wchar_t c)
{
    constexpr std::wstring_view kMarks = L"-_ .:<>\\/()[]!$";
    return (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z')
        || kMarks.find(c) != std::wstring_view::npos;
}

bool IsPlain(std::wstring_view text)
{
    if (text.empty())
        return true;
    return text.front() != L' ' && text.back() != L' ' && text.front() != kEncodedMark
        && std::all_of(text.begin(), text.end(), StandsForItself);
}
}   // namespace

TvlString ToText(const PrefValue& value) { return std::visit(TextOf(), value); }

std::optional<bool> BoolFromText(const TvlString& text)
{
    for (const wchar_t* const yes : {L"1", L"true"})
        if (text.CompareNoCase(yes) == 0)
            return true;
    for (const wchar_t* const no : {L"0", L"false"})
        if (text.CompareNoCase(no) == 0)
            return false;
    return std::nullopt;
}

std::optional<std::vector<TvlString>> ListFromText(const TvlString& text)
{
    std::vector<TvlString> list;
    TvlString element;
    bool escaped = false, open = false;
    for (const wchar_t c : text.Std()) {
        open = true;
        if (escaped) {
            element += c == L'n' ? L'\n' : c;
            escaped = false;
        } else if (c == L'\\') {
            escaped = true;
        } else if (c == L'\n') {
            list.push_back(std::exchange(element, TvlString()));
            open = false;
        } else {
            element += c;
        }
    }
    return open ? std::nullopt : std::optional(std::move(list));
}

TvlString EncodeText(const TvlString& text)
{
    if (IsPlain(text))
        return text;
    constexpr std::wstring_view kHexDigits = L"0123456789abcdef";
    std::wstring encoded(1, kEncodedMark);
    const std::vector<std::uint8_t> bytes = TvlPlatform::ToUtf16Le(text);
    for (std::size_t at = 0; at < bytes.size(); at += 2)
        for (const std::uint8_t byte : {bytes[at + 1], bytes[at]}) {
            encoded += kHexDigits[byte >> 4];
            encoded += kHexDigits[byte & 15];
        }
    return encoded;
}

TvlString DecodeText(const TvlString& text)
{
    if (text.IsEmpty() || text.GetAt(0) != kEncodedMark)
        return text;
    const std::wstring digits = text.Std().substr(1);
    std::vector<std::uint8_t> bytes;
    for (std::size_t at = 0; at < digits.size(); at += kDigits) {
        const long unit = std::wcstol(digits.substr(at, kDigits).c_str(), nullptr, 16);
        bytes.push_back(static_cast<std::uint8_t>(unit));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return TvlPlatform::FromUtf16Le(bytes.data(), bytes.size());
}

}   // namespace TvlPref
