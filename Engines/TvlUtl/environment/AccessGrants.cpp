// Access to the user's folders where a sandbox demands a grant for each.
#include "CFileLocations.h"
#include "FileLocationTable.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/Bookmarks.h"
#include "siblings/TvlUtils/SystemIO.h"

using namespace TvlUtl;
namespace SystemIO = TvlUtils::SystemIO;
namespace Bookmark = TvlUtils::SystemIO::Bookmark;

namespace {
constexpr const wchar_t* kUserSelectedBookmark = L"UserSelectedDocuments";
// Two sentences, each with the application's name.
constexpr const wchar_t* kWhyKey = L"20e9a691-7517-454a-9ffa-dba255c9e470";
constexpr const wchar_t* kHowKey = L"fd38e212-5ead-44ca-a9b7-e4f26871e2b3";
constexpr unsigned kConsentStyle = 49;   // MB_OKCANCEL | MB_ICONEXCLAMATION
constexpr int kOk = 1;                   // IDOK

/// A sentence with the application's name in it.
TvlString Sentence(const wchar_t* key)
{
    return TvlString().Format(Framework::Resources::GetString(key).c_str(), GetAppSkinSettingData().GetAppUIName());
}

bool UserConsents()
{
    const TvlString text = Sentence(kWhyKey) + L'\n' + Sentence(kHowKey);
    return TvlComponent::MessageMgr::ShowConfirmation(kConsentStyle, text.c_str()) == kOk;
}

/// Opens the grant of a stored folder, or forgets the folder.
bool StartAccess(FolderPref& folder, const TvlString& name)
{
    const TvlString path = folder.GetValue();
    if (path.IsEmpty())
        return false;
    const bool started = Bookmark::StartAccessingSecurityScopedResource(path, name);
    if (!started)
        folder.Change(TvlString());
    return started;
}

void ReturnToDefault(FileLocation& location)
{
    const TvlString old = location.folder.GetValue();
    const TvlString folder = location.defaultFolder();
    location.folder.Change(folder);
    Bookmark::SaveOpenPathToBookmarks(folder, location.DisplayName());
    // A file that can't be copied stays where it was.
    if (old != folder && SystemIO::Folder::Exists(old) && SystemIO::Folder::Exists(folder))
        static_cast<void>(SystemIO::Folder::Copy(old, folder, true));
}
}   // namespace

bool CFileLocations::StartAccessResource()
{
    if (!Bookmark::DoesSupportFileSecurityBookmarks())
        return true;
    const bool hasUserFolder = StartAccess(UserSelectedFolder(), kUserSelectedBookmark);
    for (FileLocation& location : FileLocations())
        StartAccess(location.folder, location.DisplayName());
    return hasUserFolder;
}

bool CFileLocations::RequestAccessToUserSelectedFolder(
    bool ask, TvlUtils::basic_safe_function<bool(TvlString&)> chooseFolder)
{
    if (!Bookmark::DoesSupportFileSecurityBookmarks())
        return false;
    TvlString folder = UserSelectedFolder().GetValue();
    const bool substituted = folder.IsEmpty() && !Bookmark::RequireUserPermissionToFileSystem();
    if (substituted)
        folder = SystemIO::Path::GetDocumentsFolder();
    const bool writable = !folder.IsEmpty() && SystemIO::Folder::IsWritable(folder);
    if (writable && !substituted)
        return true;
    if (!writable && ((ask && !UserConsents()) || !chooseFolder(folder)))
        return false;
    folder = SystemIO::Path::AddBackslash(folder);
    UserSelectedFolder().Change(folder);
    Bookmark::SaveOpenPathToBookmarks(folder, kUserSelectedBookmark);
    for (FileLocation& location : FileLocations())
        ReturnToDefault(location);
    return true;
}
