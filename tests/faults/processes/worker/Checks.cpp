#include "Checks.h"

#include "PaperTypes.h"
#include "UILanguage.h"
#include "WUTLRegistry.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvlUtils/ProfileText.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <string_view>

namespace SystemIO = TvlUtils::SystemIO;
using TvlPlatform::ToUtf8;

namespace {
constexpr const wchar_t* kPreference = L"Faults/Switch";   // no setting of a workspace

std::string NameIn(std::string_view settings)
{
    const auto value = TvlUtils::ProfileText(settings).Value(L"Test", L"Name");
    return value ? ToUtf8(*value) : "?";
}

std::string NameInFile(const TvlString& path)
{
    std::string bytes;
    static_cast<void>(SystemIO::File::ReadAll(path, bytes));
    return NameIn(bytes);
}

std::string NameInWorkspace(const TvlString& path)
{
    const WorkspaceContainer container = WorkspaceContainer::Open(path, ZipFile::OpenMode::Read);
    TvlUtils::Stream stream = container.OpenFile(L"content/settings.ini", false);
    std::string bytes(1 << 16, '\0');
    bytes.resize(stream.ReadSome(bytes.data(), bytes.size()));
    return NameIn(bytes);
}

std::string Papers()
{
    std::string lines;
    CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
    for (int index = papers.GetPredefinedCount(); index < papers.GetCount(); ++index) {
        TvlString name;
        if (papers.GetPaperNameAt(index, name))
            lines += "paper " + ToUtf8(name) + "\n";
    }
    lines += "predefined " + std::to_string(papers.GetPredefinedCount()) + "\n";
    CPaperTypeMgr::ReleaseInstance(false);
    return lines;
}

std::string Workspaces()
{
    std::string lines;
    const auto manager = StartManager();
    for (const WorkspaceFile& file : manager->GetNamedWorkspaces())
        lines += "workspace " + ToUtf8(file.GetName()) + " " + NameInWorkspace(file.GetFilename()) + "\n";
    return lines + "current " + ToUtf8(manager->GetCurrentWorkspaceName()) + " "
        + NameInFile(manager->GetProfileSettingsFile()) + "\n";
}

std::string Preferences()
{
    const WUTLRegistry key(
        L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Suite\\Tovel\\Application Preferences\\Test", WUTLRegistry::kReadAccess);
    TvlString name;
    TvlString value;
    ULONG count = 0;
    while (key.GetNextValue(name, value, count) == 0)
        ++count;
    const bool isThere = key.GetValue(L"Name", value) == 0;
    return "preferences " + std::to_string(count) + " " + (isThere ? ToUtf8(value) : "?") + "\n";
}

std::string Files()
{
    std::string lines;
    for (const TvlString& path : SystemIO::File::Find(TvlConfig::GetUserDir(), L"*", true, false))
        lines += "file " + ToUtf8(SystemIO::Path::GetFileName(path)) + "\n";
    return lines;
}
}   // namespace

std::unique_ptr<WorkspaceManager> StartManager()
{
    auto manager = std::make_unique<WorkspaceManager>();
    WSM_INIT init;
    init.Product = L"Suite";
    init.Application = L"Tovel";
    manager->Initialize(init, nullptr);
    return manager;
}

TvlString UserFile(const wchar_t* name) { return SystemIO::Path::Combine(TvlConfig::GetUserDir(), name); }

TvlString WorkspacePath(const std::string& name)
{
    return UserFile((L"Workspaces/" + TvlPlatform::FromUtf8(name) + L".tvws").c_str());
}

std::string StoredPreference()
{
    const auto value = CAppPrefManager::GetInstance().GetStore()->Read(kPreference);
    const auto text = value ? TvlPref::ValueAs<TvlString>(*value) : std::nullopt;
    return text ? ToUtf8(*text) : "?";
}

bool StorePreference(const std::string& value)
{
    return CAppPrefManager::GetInstance().GetStore()->Write(kPreference, TvlString(TvlPlatform::FromUtf8(value)));
}

std::string ReportState()
{
    std::string lines = Papers() + Workspaces();
    lines += Preferences();
    lines += "extracted " + NameInFile(UserFile(L"extracted.ini")) + "\n";
    CGlbLang language;
    const bool hasLanguage = IGLB_UILanguage::GetInst().ReadStoredLanguage(language) == 1;
    lines += "preferred " + StoredPreference() + " " + (hasLanguage ? ToUtf8(language.GetIO_StrFmt()) : "?") + "\n";
    return lines + Files();
}
