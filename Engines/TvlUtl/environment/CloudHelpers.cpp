#include "CloudHelpers.h"

#include "CFileLocations.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <iterator>

namespace TvlUtl::CloudHelpers {

namespace {
namespace Path = TvlUtils::SystemIO::Path;

constexpr const wchar_t* kCloudPrefix = L"CLOUD:";
constexpr wchar_t kEscapeMark = L'%';
constexpr int kEscapeLength = 3;

struct EscapeRow {
    wchar_t character;
    std::wstring_view escape;
};

constexpr EscapeRow kEscapes[] = {
    {L'"', L"%22"},
    {L'%', L"%25"},
    {L'*', L"%3A"},   // this one and
    {L'/', L"%2F"},
    {L':', L"%2A"},   // this one are exchanged in all names on disk
    {L'<', L"%3C"},
    {L'>', L"%3E"},
    {L'?', L"%3F"},
    {L'\\', L"%5C"},
    {L'|', L"%7C"},
};

/// The folder part of a path as elements.
std::vector<TvlString> FolderElements(const TvlString& path) { return Path::Split(Path::GetFolderName(path)); }

TvlString WithoutBlanksAtEnd(const TvlString& text)
{
    const std::wstring_view all = text;
    return text.Left(static_cast<int>(all.find_last_not_of(L" \t\n\v\f\r\u00A0") + 1));
}
}   // namespace

// Every "%" of an escaped name begins an escape, so one pass does what a pass for each character would do.

TvlString EscapeFileName(const TvlString& name)
{
    std::wstring escaped;
    for (const wchar_t c : name.Std()) {
        const auto row = std::find_if(
            std::begin(kEscapes), std::end(kEscapes), [&](const EscapeRow& known) { return known.character == c; });
        if (row == std::end(kEscapes))
            escaped += c;
        else
            escaped += row->escape;
    }
    return escaped;
}

TvlString UnescapeFileName(const TvlString& name)
{
    std::wstring unescaped;
    const std::wstring_view text = name;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::wstring_view escape = text.substr(at, kEscapeLength);
        const auto row = text[at] != kEscapeMark ? std::end(kEscapes)
                                                 : std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                                     [&](const EscapeRow& known) { return known.escape == escape; });
        const bool isEscape = row != std::end(kEscapes);
        unescaped += isEscape ? row->character : text[at];
        if (isEscape)
            at += kEscapeLength - 1;
    }
    return unescaped;
}

TvlString GetCloudFilePath(const TvlString& cloudId, const TvlString& fileName)
{
    if (cloudId.IsEmpty() || fileName.IsEmpty())
        return TvlString();
    const TvlString cloud = CFileLocations::GetFileLocationsTovelCloudDir();
    const TvlString folder = Path::Combine(cloud, cloudId);
    const TvlString path = Path::Combine(folder, EscapeFileName(fileName));
    // Identifiers come with documents, and ".." would lead anywhere.
    return Path::Contains(cloud, folder) && Path::Contains(folder, path) ? path : TvlString();
}

TvlString GetCloudFileIdByPath(const TvlString& path)
{
    const TvlString folder = Path::GetFolderName(path);
    const TvlString cloud = CFileLocations::GetFileLocationsTovelCloudDir();
    if (!Path::Contains(cloud, folder))
        return TvlString();
    // "." for the cloud's folder is the first.
    const auto elements = Path::Split(Path::GetRelativePath(cloud, folder, true));
    return elements.size() > 1 ? elements.back() : TvlString();
}

TvlString GetCloudIdFromAssetId(const TvlString& assetId)
{
    const auto elements = FolderElements(assetId);
    return elements.size() == 1 || elements.size() == 2 ? elements.back() : TvlString();
}

bool IsAssetPathFromCloud(const TvlString& path)
{
    const auto elements = Path::Split(path);
    return elements.size() == 3 && elements.front() == kCloudPrefix;
}

TvlString GetCloudAssetIDFromFilePath(const TvlString& path)
{
    const TvlString cloudId = GetCloudFileIdByPath(path);
    const TvlString name = Path::GetFileName(path);
    if (cloudId.IsEmpty() || name.IsEmpty())
        return TvlString();
    return Path::Combine(Path::Combine(kCloudPrefix, cloudId), name);
}

bool IsLocalFileCloudAsset(const TvlString& path) { return !GetCloudAssetIDFromFilePath(path).IsEmpty(); }

TvlString GetLocalPathForAssetPathFromCloud(const TvlString& assetPath)
{
    if (!IsAssetPathFromCloud(assetPath))
        return TvlString();
    const auto elements = Path::Split(assetPath);
    return GetCloudFilePath(elements[1], WithoutBlanksAtEnd(elements[2]));
}

}   // namespace TvlUtl::CloudHelpers
