#include "siblings/TvlPref/IniIoPolicy.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/PrefText.h"
#include "siblings/TvlUtils/String.h"
#include "windows/ProfileFiles.h"

#include <algorithm>
#include <string>
#include <vector>

namespace TvlPref {

namespace {
constexpr const wchar_t* kAbsent = L"{D2D90953-6E3B-4a5c-818C-1A0DA77231B8}";   // stands for no value
constexpr const wchar_t* kPlainMarks = L"-_ .:<>\\/()[]!$";
constexpr std::size_t kFirstCapacity = 256;   // characters

struct Place {
    TvlString section;
    TvlString name;
};

Place PlaceOf(const TvlString& key, const TvlString& prefix)
{
    const int slash = key.ReverseFind(L'/');
    const TvlString section = slash < 0 ? TvlString() : key.Left(slash);
    const wchar_t* const between = prefix.IsEmpty() || section.IsEmpty() ? L"" : L"/";
    return {prefix + between + section, key.Mid(slash + 1)};
}

/// A unit in hexadecimal behind its zeros. The comparisons are those that existing files were written with.
std::wstring PaddedHex(unsigned unit)
{
    struct Row {
        unsigned below;
        const wchar_t* zeros;
    };
    static constexpr Row kRows[] = {{15, L"000"}, {255, L"00"}, {4095, L"0"}, {0x10000, L""}};
    const auto* const row =
        std::find_if(std::begin(kRows), std::end(kRows), [&](const Row& candidate) { return unit < candidate.below; });
    return row->zeros + TvlString().Format(L"%x", unit).Std();
}

bool IsPlain(const TvlString& text)
{
    using TvlUtils::String::CharacterSet;
    return TvlUtils::String::ConsistsOnlyOf(text, CharacterSet::LettersAndDigits, kPlainMarks)
        && !text.Std().starts_with(L' ') && !text.Std().ends_with(L' ');
}
}   // namespace

IniIoPolicy::IniIoPolicy(TvlString fileName, TvlString prefix, std::shared_ptr<TvlUtils::IniParser> parser)
    : FileName(std::move(fileName)), Prefix(std::move(prefix)), m_parser(std::move(parser))
{
}

TvlString IniIoPolicy::Encode(const TvlString& text)
{
    if (IsPlain(text))
        return text;
    std::wstring encoded = L">";
    const std::vector<std::uint8_t> bytes = TvlPlatform::ToUtf16Le(text);
    for (std::size_t at = 0; at < bytes.size(); at += 2)
        encoded += PaddedHex(bytes[at] | unsigned{bytes[at + 1]} << 8);
    return encoded;
}

TvlString IniIoPolicy::Decode(const TvlString& text) { return DecodeText(text); }

bool IniIoPolicy::ReadText(const TvlString& section, const TvlString& name, TvlString& text) const
{
    if (m_parser) {
        text = m_parser->GetString(section, name, kAbsent);
        return text != kAbsent;
    }
    std::vector<wchar_t> buffer(kFirstCapacity);
    for (;; buffer.resize(2 * buffer.size())) {
        const DWORD length = Ports::ProfileFiles::Get().GetText(
            section.c_str(), name.c_str(), kAbsent, buffer.data(), static_cast<DWORD>(buffer.size()), FileName.c_str());
        if (length + 1 < buffer.size())
            break;
    }
    text = buffer.data();
    return text != kAbsent;
}

bool IniIoPolicy::Read(const TvlString& key, TvlString& value) const
{
    const Place place = PlaceOf(key, Prefix);
    TvlString text;
    if (!ReadText(place.section, place.name, text))
        return false;
    value = Decode(text);
    return true;
}

bool IniIoPolicy::Write(const TvlString& key, const TvlString& value) const
{
    const Place place = PlaceOf(key, Prefix);
    const TvlString text = Encode(value);
    if (m_parser)
        return m_parser->SetString(place.section, place.name, text);
    return Ports::ProfileFiles::Get().SetText(
        place.section.c_str(), place.name.c_str(), text.c_str(), FileName.c_str());
}

}   // namespace TvlPref
