#include "Checks.h"

#include "PaperTypes.h"
#include "UILanguage.h"
#include "WUTLRegistry.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/ProfileText.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <string_view>

namespace SystemIO = TvlUtils::SystemIO;
using TvlPlatform::ToUtf8;

namespace {
constexpr const wchar_t* kSettingsEntry = L"content/settings.ini";
constexpr const wchar_t* kPreference = L"Faults/Switch";   // no setting of a workspace
constexpr const wchar_t* kApplication = L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Suite\\Tovel";

SettingsOwner OwnerIn(std::string_view settings)
{
    std::map<std::string, std::string> values;
    for (const auto& section : TvlUtils::ProfileText(settings).AllData())
        for (const auto& [key, value] : section.entries)
            values[ToUtf8(key)] = ToUtf8(value);
    return OwnerOf(values);
}

std::string BytesOf(const WorkspaceContainer& container, const wchar_t* entry)
{
    TvlUtils::Stream stream = container.OpenFile(entry, false);
    std::string bytes(1 << 16, '\0');
    bytes.resize(stream.ReadSome(bytes.data(), bytes.size()));
    return bytes;
}

SettingsOwner OwnerInWorkspace(const TvlString& path)
{
    const WorkspaceContainer container = WorkspaceContainer::Open(path, ZipFile::OpenMode::Read);
    const bool isWhole = BytesOf(container, kOtherEntry) == kOtherContent;
    return isWhole ? OwnerIn(BytesOf(container, kSettingsEntry)) : SettingsOwner{kTorn};
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
        lines += "workspace " + ToUtf8(file.GetName()) + " " + OwnerInWorkspace(file.GetFilename()).Text() + "\n";
    for (const TvlString& path :
        SystemIO::File::Find(UserFile(L"Workspaces"), L"settings.ini.*.unsaved", false, false)) {
        const WorkspaceContainer kept = WorkspaceContainer::Open(path, ZipFile::OpenMode::Read);
        lines += "kept " + SystemIO::ToFilePath(path).stem().extension().string().substr(1) + " "
            + OwnerIn(BytesOf(kept, kSettingsEntry)).Text() + "\n";
    }
    return lines + "current " + ToUtf8(manager->GetCurrentWorkspaceName()) + " "
        + OwnerInFile(manager->GetProfileSettingsFile()).Text() + "\n";
}

std::string Preferences()
{
    const WUTLRegistry key(
        (TvlString(kApplication) + L"\\Application Preferences\\Test").c_str(), WUTLRegistry::kReadAccess);
    std::map<std::string, std::string> values;
    TvlString name;
    TvlString value;
    for (ULONG count = 0; key.GetNextValue(name, value, count) == 0; ++count)
        values[ToUtf8(name)] = ToUtf8(value);
    return "preferences " + OwnerOf(values).Text() + "\n";
}

std::string StoredLanguage()
{
    CGlbLang language;
    const bool isThere = IGLB_UILanguage::GetInst().ReadStoredLanguage(language) == 1;
    return isThere ? ToUtf8(language.GetIO_StrFmt()) : "?";
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

TvlString SettingsFile() { return UserFile(L"Workspaces/settings.ini"); }

SettingsOwner OwnerInFile(const TvlString& path)
{
    std::string bytes;
    static_cast<void>(SystemIO::File::ReadAll(path, bytes));
    return OwnerIn(bytes);
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

std::string StoredWorkspace()
{
    TvlString path;
    const WUTLRegistry key(kApplication, WUTLRegistry::kReadAccess);
    return key.GetValue(L"LastTovelWorkspaceUsed", path) == 0 ? SystemIO::ToFilePath(path).stem().string() : "";
}

bool IsApplying() { return SystemIO::File::Exists(SettingsFile() + L".applying"); }

void Start()
{
    CPaperTypeMgr::GetInstance();
    StartManager();
    StoredLanguage();
    CPaperTypeMgr::ReleaseInstance(false);
}

std::string ReportState()
{
    std::string lines = Papers() + Workspaces();
    lines += Preferences();
    lines += "extracted " + OwnerInFile(UserFile(L"extracted.ini")).Text() + "\n";
    lines += "preferred " + StoredPreference() + " " + StoredLanguage() + "\n";
    return lines + Files();
}
