#include "InstalledLanguages.h"

#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/Json.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvlUtils/TextStreamReader.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Path = TvlUtils::SystemIO::Path;

namespace {
// An "info.json" of the suite has some 80 bytes.
constexpr TvlUtils::Json::Limits kLimits{.bytes = 65536, .depth = 16};
constexpr int kLongestName = 100;

bool IsControl(wchar_t c) { return c < L' ' || c == 0x7F; }

/// Whether a name is that of a folder, on every system, and no way out of the folder that it lies in. Windows drops points
/// and blanks at a name's end.
bool IsFolderName(const TvlString& name)
{
    constexpr std::wstring_view kSpecial = L"/\\:*?\"<>|";
    const std::wstring& text = name.Std();
    const auto isRefused = [&](wchar_t c) {
        return IsControl(c) || c == 0xFFFD || kSpecial.find(c) != std::wstring_view::npos;
    };
    return !text.empty() && name.GetLength() <= kLongestName && text.find(L"..") == std::wstring::npos
        && text.back() != L'.' && text.back() != L' ' && std::none_of(text.begin(), text.end(), isRefused);
}

/// Whether a name fits a row of the list that the user chooses from.
bool IsShownName(const TvlString& name)
{
    const std::wstring& text = name.Std();
    return !text.empty() && name.GetLength() <= kLongestName && std::none_of(text.begin(), text.end(), IsControl);
}

/// Names of the folders below `root`, sorted.
std::vector<TvlString> FolderNames(const TvlString& root)
{
    using namespace TvlUtils::SystemIO;
    std::vector<FolderEntry> entries;
    if (!FileLayer::Get().List(ToFilePath(root), entries))
        return {};
    std::vector<TvlString> names;
    for (const FolderEntry& entry : entries)
        if (entry.kind == FileKind::Folder)
            names.push_back(FromFilePath(entry.name));
    std::sort(names.begin(), names.end());
    return names;
}

std::optional<LanguageInfo> ReadInfoFile(const TvlString& folder)
{
    const TvlString file = Path::Combine(Path::Combine(folder, L"Data"), L"info.json");
    const auto text = TvlUtils::TextStreamReader(TvlUtils::FileStream::OpenForRead(file)).ReadUtf8(kLimits.bytes);
    return text ? ReadLanguageInfo(*text) : std::nullopt;
}
}   // namespace

std::optional<LanguageInfo> ReadLanguageInfo(std::string_view text)
{
    const auto object = TvlUtils::Json::Parse(text, kLimits);
    TvlString code;
    LanguageInfo info;
    if (!object || !object->GetValue(L"langCode", code) || !object->GetValue(L"dirName", info.entry.DirName)
        || !object->GetValue(L"uiName", info.entry.UIName) || !info.language.SetFromIO_StrFmt(code))
        return std::nullopt;
    if (!IsFolderName(info.entry.DirName) || !IsShownName(info.entry.UIName))
        return std::nullopt;
    return info;
}

void ReadInstalledLanguages(
    const TvlString& root, const TvlString& resourceFile, UILanguageMap& languages, UILanguageMap& others)
{
    languages.clear();
    others.clear();
    for (const TvlString& name : FolderNames(root)) {
        auto info = ReadInfoFile(Path::Combine(root, name));
        if (!info)
            continue;
        const TvlString data = Path::Combine(Path::Combine(root, info->entry.DirName), L"Data");
        const bool lacksFile =
            !resourceFile.IsEmpty() && !TvlUtils::SystemIO::File::Exists(Path::Combine(data, resourceFile));
        auto& map = lacksFile ? others : languages;
        if (auto& entry = map[info->language.GetCode()]; !entry)
            entry = std::make_unique<UILanguageEntry>(std::move(info->entry));
    }
}
