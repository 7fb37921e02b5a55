#include "siblings/TvlCharacter/CGlbLang.h"

#include "TvlCharacter/WindowsLanguages.h"

#include <algorithm>
#include <iterator>

namespace {
using WindowsLanguages::kRows;

constexpr LANGID kPrimary = 0x3FF;           // the group of languages that an id belongs to
constexpr LANGID kMainSublanguage = 0x400;   // SUBLANG_DEFAULT

constexpr ULONG Pack(const char (&code)[4])
{
    ULONG packed = 0;
    for (int i = 2; i >= 0; --i)
        packed = packed << 8 | static_cast<unsigned char>(code[i]);
    return packed;
}

constexpr ULONG kSimplifiedChinese[] = {Pack("CHS"), Pack("ZHI")};                 // mainland, Singapore
constexpr ULONG kTraditionalChinese[] = {Pack("CHT"), Pack("ZHH"), Pack("ZHM")};   // Taiwan, Hong Kong, Macao
constexpr ULONG kOtherFarEast[] = {Pack("JPN"), Pack("KOR")};

static_assert(Pack("ENU") == 5590597 && Pack("CHS") == 5457987 && Pack("CHT") == 5523523);

template <std::size_t Size>
bool IsOneOf(ULONG code, const ULONG (&codes)[Size])
{
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

ULONG CodeOf(LANGID id)
{
    const auto row = std::find_if(std::begin(kRows), std::end(kRows), [=](const auto& r) { return r.id == id; });
    return row == std::end(kRows) ? 0 : Pack(row->code);
}
}   // namespace

bool CGlbLang::SetFromIO_StrFmt(const TvlString& text)
{
    m_code = 0;
    if (text.GetLength() != 3)
        return false;
    ULONG packed = 0;
    for (int i = 2; i >= 0; --i) {
        const wchar_t c = text[i] >= L'a' && text[i] <= L'z' ? static_cast<wchar_t>(text[i] - L'a' + L'A') : text[i];
        if (!(c >= L'A' && c <= L'Z') && !(c >= L'0' && c <= L'9'))
            return false;
        packed = packed << 8 | static_cast<ULONG>(c);
    }
    m_code = packed;
    return true;
}

TvlString CGlbLang::GetIO_StrFmt() const
{
    TvlString text;
    for (ULONG left = m_code; left != 0; left >>= 8)
        text += static_cast<wchar_t>(left & 0xFF);
    return text;
}

void CGlbLang::SetFromWinLangID(LANGID language)
{
    m_code = CodeOf(language);
    if (m_code == 0)
        m_code = CodeOf((language & kPrimary) | kMainSublanguage);
}

LANGID CGlbLang::GetWinLangID() const
{
    const auto row =
        std::find_if(std::begin(kRows), std::end(kRows), [this](const auto& r) { return Pack(r.code) == m_code; });
    return row == std::end(kRows) ? LANGID{0} : row->id;
}

bool CGlbLang::IsCS() const { return IsOneOf(m_code, kSimplifiedChinese); }
bool CGlbLang::IsCT() const { return IsOneOf(m_code, kTraditionalChinese); }
bool CGlbLang::IsFarEast() const { return IsCS() || IsCT() || IsOneOf(m_code, kOtherFarEast); }

bool CGlbLang::IsRTL() const
{
    // Primary language ids: Arabic, Hebrew, Urdu, Persian, Sindhi, Syriac, Pashto, Divehi, Uyghur, Dari and Central
    // Kurdish.
    static constexpr LANGID kRightToLeft[] = {0x01, 0x0D, 0x20, 0x29, 0x59, 0x5A, 0x63, 0x65, 0x80, 0x8C, 0x92};
    return std::binary_search(std::begin(kRightToLeft), std::end(kRightToLeft), GetWinLangID() & kPrimary);
}
