#include "CPluginStates.h"

#include "siblings/TvlConfig/PluginsFolder.h"
#include "siblings/TvlUtils/StringSplit.h"
#include "siblings/TvlUtils/SystemIO.h"

namespace Path = TvlUtils::SystemIO::Path;

namespace {
constexpr const wchar_t* kBlanks = L" \t\n\v\f\r";
constexpr const wchar_t* kOff = L"0";

TvlString ProgramFilesFolder()
{
    return Path::ExpandWindowsEnvStrings(Path::Combine(Path::Combine(L"%ProgramFiles%", L"Tovel"), L"Plugins"));
}

struct TokenRow {
    const wchar_t* token;
    TvlString (*folder)();
};

constexpr TokenRow kTokens[] = {
    {L"<plugins>", [] { return INIGetPluginsDir(); }},
    {L"<plugins_programfiles>", ProgramFilesFolder},
};

TvlString FolderOf(const TvlString& text)
{
    for (const TokenRow& row : kTokens)
        if (text.CompareNoCase(row.token) == 0)
            return row.folder();
    return text;
}
}   // namespace

const TvlString CPluginStates::defaultDirs = L"<plugins>, 1";
const TvlString CPluginStates::defaultProgramFilesDir = L"<plugins_programfiles>, 1";

// Behind the texts that they begin with.
CAppPrefObject<std::vector<TvlString>> CPluginStates::PluginDirs(
    L"PlugInFilters64/Dirs", {defaultDirs, defaultProgramFilesDir});
CAppPrefObject<TvlString> CPluginStates::PluginFileExtensions(
    L"PlugInFilters64/FileExtensons", L"*.dll;*.8b?;*.eff;*.lnk");

// Nothing to copy.
CPluginStates& CPluginStates::operator=(const CPluginStates&) = default;
CPluginStates& CPluginStates::operator=(CPluginStates&&) = default;

std::vector<std::pair<TvlString, bool>> CPluginStates::GetPluginSearchPathAndState()
{
    std::vector<std::pair<TvlString, bool>> folders;
    for (const TvlString& entry : PluginDirs.GetValue()) {
        auto [folder, state] = TvlUtils::String::SplitAtFirst(entry, L',');
        if (!folder.IsEmpty())
            folders.emplace_back(FolderOf(folder.Trim(kBlanks)), state.Trim(kBlanks) != kOff);
    }
    return folders;
}
