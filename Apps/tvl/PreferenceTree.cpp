#include "PreferenceTree.h"

#include "RegistryKey.h"
#include "WUTLRegistry.h"
#include "siblings/TvlComponent/ApplicationInfo.h"
#include "siblings/TvlConfig/ProductKey.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/IniIoPolicy.h"
#include "siblings/TvlUtils/IniParser.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

using TvlPlatform::ToUtf8;
using TvlPref::IniIoPolicy;

namespace {
TvlString TreeKey()
{
    return TvlString().Format(L"HKEY_CURRENT_USER\\%s\\%s\\Application Preferences", INIGetRegistryProductKey(),
        ApplicationInfo::Settings().GetRegistryName());
}

/// Whether a settings file can name the section.
bool CanBeSection(const TvlString& section)
{
    TvlString trimmed = section;
    return section.FindOneOf(L"]\r\n") < 0 && trimmed.Trim(L" \t") == section;
}

/// A text by its units, which reads back whatever it is.
TvlString InUnits(const TvlString& text)
{
    TvlString units = L">";
    const std::vector<std::uint8_t> bytes = TvlPlatform::ToUtf16Le(text);
    for (std::size_t at = 0; at < bytes.size(); at += 2)
        units += TvlString().Format(L"%02x%02x", unsigned{bytes[at + 1]}, unsigned{bytes[at]});
    return units;
}

/// A text in a settings file, in the form that applications write as far as that reads back.
TvlString InFile(const TvlString& text)
{
    return IniIoPolicy::ReadsBack(text) ? IniIoPolicy::Encode(text) : InUnits(text);
}

/// The same of a name, which a line begins with.
TvlString NameInFile(const TvlString& name) { return name.IsEmpty() || name[0] == L'[' ? InUnits(name) : InFile(name); }
}   // namespace

bool PreferenceTree::Place::operator<(const Place& other) const
{
    const int order = section.CompareNoCase(other.section);
    return order != 0 ? order < 0 : name.CompareNoCase(other.name) < 0;
}

PreferenceTree PreferenceTree::FromRegistry()
{
    PreferenceTree tree;
    if (const TvlString key = TreeKey(); WUTLRegistry::IsValid(key.c_str()) == 0)
        tree.AddKey(key, L"");
    return tree;
}

void PreferenceTree::AddKey(const TvlString& key, const TvlString& section)
{
    const RegistryKey opened = RegistryKey::Open(ToUtf8(key), PREFUTILS::kRegistryRead);
    for (const RegistryEntry& value : opened.Values()) {
        if (value.type == PREFUTILS::kRegistryText)
            m_values[{section, value.name}] = value.Text();
        else
            TvlUtils::LogMessage(
                TvlUtils::LogLevel::Warning, L"No text, and not saved: " + key + L"\\" + TvlString(value.name));
    }
    for (const std::wstring& name : opened.Subkeys())
        AddKey(key + L"\\" + TvlString(name), section.IsEmpty() ? TvlString(name) : section + L"/" + TvlString(name));
}

PreferenceTree PreferenceTree::FromSettings(const TvlString& path)
{
    PreferenceTree tree;
    for (const auto& [section, entries] : TvlUtils::IniParser(path).GetAllData()) {
        TvlString place = section;
        place.Replace(L"\\", L"/");
        for (const auto& [name, value] : entries)
            tree.m_values[{place, IniIoPolicy::Decode(name)}] = IniIoPolicy::Decode(value);
    }
    return tree;
}

bool PreferenceTree::Save(const TvlString& path) const
{
    std::string text;
    const TvlString* section = nullptr;
    for (const auto& [place, value] : m_values) {
        if (!CanBeSection(place.section)) {
            TvlUtils::LogMessage(TvlUtils::LogLevel::Warning, L"No section of settings: " + place.section);
            continue;
        }
        if (!section || section->CompareNoCase(place.section) != 0)
            text += '[' + ToUtf8(place.section) + "]\r\n";
        section = &place.section;
        text += ToUtf8(NameInFile(place.name)) + '=' + ToUtf8(InFile(value)) + "\r\n";
    }
    return static_cast<bool>(TvlUtils::SystemIO::File::WriteAside(path, text));
}
