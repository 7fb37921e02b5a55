// Texts by number.
#include "GLB_UILanguage.h"

#include "siblings/TvlResources/Resources.h"

#include <algorithm>
#include <optional>

namespace {
constexpr std::wstring_view kPrefix = L"TovelDefaultID_";
constexpr ULONG kNoNumber = 0xFFFFFFFFul;   // ULONG_MAX of the 32-bit wcstoul, which means overflow

/// wcstoul with base 10 and a 32-bit unsigned long: blanks and a sign may come first, a negative number wraps around, and
/// what stands behind the digits is passed over. Empty without digits.
std::optional<ULONG> LeadingNumber(std::wstring_view text)
{
    constexpr std::wstring_view kBlanks = L" \t\n\v\f\r";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    const bool isNegative = text.starts_with(L'-');
    if (isNegative || text.starts_with(L'+'))
        text.remove_prefix(1);
    unsigned long long number = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && text[digits] >= L'0' && text[digits] <= L'9'; ++digits)
        number =
            std::min<unsigned long long>(number * 10 + static_cast<unsigned>(text[digits] - L'0'), kNoNumber + 1ull);
    if (digits == 0)
        return std::nullopt;
    if (number > kNoNumber)
        return kNoNumber;
    return static_cast<ULONG>(isNegative ? 0 - number : number);
}

std::optional<ULONG> DefaultId(const TvlString& text)
{
    const std::wstring_view whole = text.Std();
    if (!whole.starts_with(kPrefix))
        return std::nullopt;
    const auto number = LeadingNumber(whole.substr(kPrefix.size()));
    return number && *number < kNoNumber ? number : std::nullopt;
}

int TextById(const wchar_t* library, ULONG id, const TvlString& text, TvlString& out)
{
    using namespace Framework::Resources;
    out = DefaultId(text) ? text : GetLegacyString(GetLegacyGuid(library, id));
    return !out.IsEmpty();
}
}   // namespace

int GLB_UILanguage::GetDefaultId(ULONG number, TvlString& text)
{
    text.Format(L"TovelDefaultID_%u", number);
    return 1;
}

int GLB_UILanguage::GetResourceStringById(ULONG id, const TvlString& text, TvlString& out)
{
    return TextById(L"TvlUtl", id, text, out);
}

int GLB_UILanguage::GetCommonStringById(ULONG id, const TvlString& text, TvlString& out)
{
    return TextById(L"TvlCmnRes", id, text, out);
}

bool GLB_UILanguage::IsDefaultIdText(const TvlString& text) { return DefaultId(text).has_value(); }
ULONG GLB_UILanguage::ParseDefaultId(const TvlString& text) { return DefaultId(text).value_or(0); }
