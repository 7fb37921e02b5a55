// New workspace files: copies for the user and for others, and the default one.
#include "ExportSettings.h"
#include "WorkspaceAccess.h"
#include "WorkspaceFile.h"
#include "siblings/TvlComponent/ApplicationInfo.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/SystemIO.h"

using TvlUtils::Guid;
using namespace TvlUtils::SystemIO;
namespace Properties = ZipContainerSchema::Metadata;
namespace WorkspaceProperties = WorkspaceContainerSchema::Metadata;

namespace {
// "Other" in the suite's languages. The first language has no name on purpose: it is the default.
constexpr const wchar_t* kOtherCategory =
    L":[Other];br:[Outra];cs:[其它];ct:[其他];cz:[Další];de:[Andere];en:[Other];es:[Otro];fr:[Autre];it:[Altro];"
    L"jp:[その他];nl:[Overig];pl:[Inne];ru:[Другой];";

constexpr const wchar_t* kDefaultTitle = L"fbd11f60-0a0f-4410-8026-8633a0f4d4ef";

/// Descriptions of the default workspace, by a part of the application's key. The last one serves every application.
struct DescriptionRow {
    const wchar_t* application;
    const wchar_t* key;
};
constexpr DescriptionRow kDescriptions[] = {
    {L"LAYOUTER", L"44e925cc-890c-49b2-8ffb-5407cd23fd88"},
    {L"PIXEL-BENCH", L"317ef9ec-3a6c-4d80-a5a2-de1532bc336e"},
    {L"", L"f9b8bdb1-1f64-4379-935a-4bf1a4e70ff0"},
};

TvlString DefaultDescription()
{
    const TvlString& application = ApplicationInfo::Settings().GetRegistryName();
    for (const DescriptionRow& row : kDescriptions)
        if (application.Find(row.application) >= 0)
            return Framework::Resources::GetString(row.key);
    return {};
}

void AddStockThumbnail(WorkspaceContainer& container, const wchar_t* name)
{
    const TvlString picture = Path::Combine(INIGetBootDefaultWorkspaceDir(), name, L"jpg");
    if (Path::IsFile(picture))
        container.AddThumbnail(picture);
}

/// A new identity that remembers the old one.
void RenewIdentity(WorkspaceContainer& container)
{
    const WorkspaceContainer& reader = container;
    const Guid old = reader.GetMetadata(Properties::InstanceID).GetOr(Guid());
    container.SetMetadata(Properties::InstanceID, Guid::Generate());
    if (old.IsNil())
        return;
    auto ancestors = reader.GetMetadata(Properties::DerivedFrom).GetOr(std::vector<Guid>());
    container.SetMetadata(Properties::DerivedFrom, DocContainer::AddToDerivedFromList(std::move(ancestors), old));
}

/// Describes in the container what it is to hold; false when the description can't be stored.
bool SaveExportSettings(WorkspaceContainer& container, const WorkspaceFileExportSettings& settings)
{
    const TvlString name = ContentPath(WorkspaceContainerSchema::exportSettingsFile);
    WXmlDoc document(false);
    if (!WriteExportSettings(settings, document)) {
        // The source's own, which it has when it was exported before, would describe something else.
        container.DeleteFileW(name);
        return true;
    }
    TvlUtils::Stream stream = container.CreateFileW(name, false, false, nullptr);
    return document.Save(stream);
}

/// The object of a workspace that was closed: one that could not be written is a failure.
WorkspaceFile Finished(WorkspaceContainer& container, const TvlString& path)
{
    return WorkspaceFile(container.Close() ? path : TvlString());
}
}   // namespace

WorkspaceFile WorkspaceFile::Export(const TvlString& target, const TvlString& source, const TvlString& settingsName,
    const std::vector<FilePair>& files, const WorkspaceFileExportSettings& settings)
{
    if (!File::Copy(source, target, true))
        return {};
    WorkspaceContainer container = OpenWorkspaceForWriting(target);
    if (!container)
        return {};
    container.SetStringMetadata(Properties::Title, UILanguageName(), Path::GetFileNameWithoutExtension(target));
    container.SetMetadata(WorkspaceProperties::UIOrder, kUserWorkspaceOrder);
    const bool isDescribed = SaveExportSettings(container, settings);
    // Whatever failed: what is to be left out must not stay in the copy.
    if (!settings.ExportApplicationData) {
        container.DeleteFileW(settingsName);
        // Managers name the file on disk that the entry is extracted to.
        container.DeleteFileW(ContentPath(Path::GetFileName(settingsName).c_str()));
        for (const FilePair& file : files)
            container.DeleteFileW(file.first);
    }
    const WorkspaceFile exported = Finished(container, target);
    return isDescribed ? exported : WorkspaceFile();
}

WorkspaceFile WorkspaceFile::CreateFrom(const TvlString& path, const TvlString& source,
    const MultiLanguageString& title, const MultiLanguageString& description)
{
    if (!File::Copy(source, path, false))
        return {};
    WorkspaceContainer container = OpenWorkspaceForWriting(path);
    if (!container)
        return {};
    container.SetMetadata(Properties::Title, title);
    container.SetMetadata(WorkspaceProperties::Category, MultiLanguageString(kOtherCategory));
    container.SetMetadata(Properties::Description, description);
    container.SetMetadata(WorkspaceProperties::UIOrder, kUserWorkspaceOrder);
    RenewIdentity(container);
    AddStockThumbnail(container, L"user_workspace");
    return Finished(container, path);
}

WorkspaceFile WorkspaceFile::CreateFrom(const TvlString& path, const WorkspaceFile& source)
{
    return CreateFrom(path, source.GetFilename(), source.GetTitle(), source.GetDescription());
}

WorkspaceFile WorkspaceFile::CreateDefault(const TvlString& path)
{
    WorkspaceContainer container = WorkspaceContainer::Create(path);
    if (!container)
        return {};
    const TvlString language = UILanguageName();
    container.SetStringMetadata(Properties::Title, language, Framework::Resources::GetString(kDefaultTitle));
    container.SetStringMetadata(WorkspaceProperties::Category, language, L"");
    container.SetStringMetadata(Properties::Description, language, DefaultDescription());
    container.SetMetadata(Properties::InstanceID, Guid::Generate());
    container.SetMetadata(Properties::DocumentID, Guid::Generate());
    container.SetMetadata(WorkspaceProperties::UIOrder, kDefaultWorkspaceOrder);
    AddStockThumbnail(container, L"_default");
    return Finished(container, path);
}
