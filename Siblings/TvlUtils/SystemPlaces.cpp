// Places that the system knows.
#include "siblings/TvlUtils/SystemIO.h"

#include "TvlUtils/FileAccess.h"
#include "windows/Environment.h"
#include "windows/Modules.h"
#include "windows/UserFolders.h"

namespace TvlUtils::SystemIO::Path {

TvlString GetDocumentsFolder()
{
    if (const auto folder = Ports::Environment::Get().Variable(L"TVL_USER_DIR"); folder && !folder->empty())
        return Combine(*folder, L"Documents");
    return Ports::UserFolders::Get().Documents();
}

TvlString GetTempFolder()
{
    const auto user = Ports::Environment::Get().Variable(L"TVL_USER_DIR");
    if (!user || user->empty()) {
        std::error_code unknown;
        return FromFilePath(std::filesystem::temp_directory_path(unknown));
    }
    const TvlString folder = Combine(*user, L"Temp");
    static_cast<void>(Folder::EnsureExists(folder));   // who makes files there learns that it failed
    return folder;
}

TvlString CreateNewTempFolder()
{
    const TvlString place = GetTempFolder();
    if (place.IsEmpty())
        return {};
    const TvlString folder = GetTempFileNameW(place, L"tvl", L"");
    // One that is there is somebody else's, who could change what is put into it.
    const bool isMade = static_cast<bool>(Reported([&] { return FileLayer::Get().MakePrivateFolder(PathOf(folder)); }));
    return isMade ? folder : TvlString();
}

TvlString GetProcessFileName(void* process)
{
    return process ? TvlString() : TvlString(Ports::Modules::Get().ProgramPath());
}

TvlString ExpandWindowsEnvStrings(const TvlString& text)
{
    TvlString expanded;
    int at = 0;
    for (int begin = 0; (begin = text.Find(L'%', at)) >= 0;) {
        const int end = text.Find(L'%', begin + 1);
        if (end < 0)
            break;
        const TvlString name = text.Mid(begin + 1, end - begin - 1);
        const auto value = name.IsEmpty() ? std::nullopt : Ports::Environment::Get().Variable(name.Std());
        expanded += text.Mid(at, begin - at);
        // The closing sign of a name that is not set may open the next one.
        expanded += value ? TvlString(*value) : text.Mid(begin, end - begin);
        at = value ? end + 1 : end;
    }
    return expanded + text.Mid(at);
}

}   // namespace TvlUtils::SystemIO::Path
