// Workspace files: the object and its metadata.
#include "WorkspaceFile.h"

#include "InjectedServices.h"
#include "WorkspaceAccess.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <optional>
#include <utility>

using TvlUtils::Guid;
namespace Properties = ZipContainerSchema::Metadata;
namespace WorkspaceProperties = WorkspaceContainerSchema::Metadata;

namespace {
/// The identity that the configuration of a file carries which is older than these properties: nil where it has none, nothing
/// where it can't be read this time.
std::optional<Guid> OldIdentity(const WorkspaceContainer& container)
{
    const TvlString name = ContentPath(WorkspaceContainerSchema::workspaceFile);
    if (!container.DoesFileExist(name))
        return Guid();
    const TvlUtils::Stream stream = container.OpenFile(name, false);
    if (!stream)
        return std::nullopt;
    WXmlDoc document(false);
    document.Load(stream);   // without a document there is no such node
    const WXmlNode application = document.GetRootNode().GetNode(WXPath(L"//applicationInfo"));
    return Guid(application.Attribute(L"workspaceID").GetString(L""));
}
}   // namespace

WorkspaceFile::WorkspaceFile(const TvlString& path)
    : Filename(path), Name(TvlUtils::SystemIO::Path::GetFileNameWithoutExtension(path))
{
}

WorkspaceFile::WorkspaceFile(const WorkspaceFile& other)
    : Filename(other.Filename), Name(other.Name), MetadataLoaded(other.MetadataLoaded), Title(other.Title),
      Category(other.Category), Description(other.Description), UIOrder(other.UIOrder), InstanceID(other.InstanceID),
      DocumentID(other.DocumentID), DerivedFrom(other.DerivedFrom), PreviewAvailable(other.PreviewAvailable)
{
}

WorkspaceFile::WorkspaceFile(WorkspaceFile&& other) noexcept { Swap(other); }

WorkspaceFile& WorkspaceFile::operator=(const WorkspaceFile& other)
{
    WorkspaceFile copy(other);
    Swap(copy);
    return *this;
}

WorkspaceFile& WorkspaceFile::operator=(WorkspaceFile&& other) noexcept
{
    WorkspaceFile taken(std::move(other));
    Swap(taken);
    return *this;
}

void WorkspaceFile::Swap(WorkspaceFile& other) noexcept
{
    std::swap(Filename, other.Filename);
    std::swap(Name, other.Name);
    std::swap(MetadataLoaded, other.MetadataLoaded);
    std::swap(Title, other.Title);
    std::swap(Category, other.Category);
    std::swap(Description, other.Description);
    std::swap(UIOrder, other.UIOrder);
    std::swap(InstanceID, other.InstanceID);
    std::swap(DocumentID, other.DocumentID);
    std::swap(DerivedFrom, other.DerivedFrom);
    std::swap(PreviewAvailable, other.PreviewAvailable);
}

bool WorkspaceFile::operator==(const WorkspaceFile& other) const
{
    InitializeMetadata();
    other.InitializeMetadata();
    const auto isSame = [](const MultiLanguageString& a, const MultiLanguageString& b) {
        return a.GetDefaultLangString().CompareNoCase(b.GetDefaultLangString()) == 0;
    };
    return Name.CompareNoCase(other.Name) == 0 && isSame(Title, other.Title) && isSame(Category, other.Category)
        && isSame(Description, other.Description);
}

MultiLanguageString WorkspaceFile::GetTitle() const
{
    InitializeMetadata();
    return Title;
}

MultiLanguageString WorkspaceFile::GetCategory() const
{
    InitializeMetadata();
    return Category;
}

MultiLanguageString WorkspaceFile::GetDescription() const
{
    InitializeMetadata();
    return Description;
}

LONG WorkspaceFile::GetUIOrder() const
{
    InitializeMetadata();
    return UIOrder;
}

Guid WorkspaceFile::GetInstanceID() const
{
    InitializeMetadata();
    return InstanceID;
}

Guid WorkspaceFile::GetDocumentID() const
{
    InitializeMetadata();
    return DocumentID;
}

std::vector<Guid> WorkspaceFile::GetDerivedFrom() const
{
    InitializeMetadata();
    return DerivedFrom;
}

bool WorkspaceFile::IsPreviewAvailable() const
{
    InitializeMetadata();
    return PreviewAvailable;
}

TvlString WorkspaceFile::GetTitleInUILang() const
{
    return GetTitle().GetLangString(TheInjectedServices().getUILanguageId());
}

TvlString WorkspaceFile::GetCategoryInUILang() const
{
    return GetCategory().GetLangString(TheInjectedServices().getUILanguageId());
}

TvlString WorkspaceFile::GetDescriptionInUILang() const
{
    return GetDescription().GetLangString(TheInjectedServices().getUILanguageId());
}

bool WorkspaceFile::InitializeMetadata() const
{
    if (MetadataLoaded)
        return true;
    MetadataLoaded = true;
    WorkspaceContainer container = OpenWorkspaceForReading(Filename);
    if (!container)
        return false;
    ReadProperties(container);
    PreviewAvailable = !container.GetThumbnailInfo().first.IsEmpty();
    if (DocumentID.IsNil() || InstanceID.IsNil())
        Repair(container);
    container.Close();
    return true;
}

void WorkspaceFile::ReadProperties(WorkspaceContainer& container) const
{
    const WorkspaceContainer& reader = container;
    const auto texts = [&](const Metadata::Definition& property) {
        return reader.GetMetadata(property).GetOr(MultiLanguageString());
    };
    Title = texts(Properties::Title);
    Category = texts(WorkspaceProperties::Category);
    Description = texts(Properties::Description);
    UIOrder = reader.GetMetadata(WorkspaceProperties::UIOrder).GetOr(kUserWorkspaceOrder);
    ReadIdentity(container);
}

void WorkspaceFile::ReadIdentity(const WorkspaceContainer& container) const
{
    DocumentID = container.GetMetadata(Properties::DocumentID).GetOr(Guid());
    InstanceID = container.GetMetadata(Properties::InstanceID).GetOr(Guid());
    DerivedFrom = container.GetMetadata(Properties::DerivedFrom).GetOr(std::vector<Guid>());
}

void WorkspaceFile::Repair(WorkspaceContainer& container) const
{
    // What goes wrong with this container from here on keeps it from being written.
    container.Close();
    container = OpenWorkspaceForWriting(Filename);
    const bool isWritable = static_cast<bool>(container);
    if (!isWritable)
        container = OpenWorkspaceForReading(Filename);
    if (container)
        ReadIdentity(container);   // another process may have been faster, or the first read failed
    const bool isLacking = DocumentID.IsNil() || InstanceID.IsNil();
    const std::optional<Guid> old = isLacking && DerivedFrom.empty() ? OldIdentity(container) : Guid();
    if (old && !old->IsNil()) {
        DerivedFrom = DocContainer::AddToDerivedFromList({}, *old);
        DocumentID = *old;
    }
    if (DocumentID.IsNil())
        DocumentID = Guid::Generate();
    if (InstanceID.IsNil())
        InstanceID = Guid::Generate();
    // A file that can't be read as a whole or written keeps these for the object's life alone.
    if (isLacking && isWritable && old)
        StoreIdentity(container);
    container.Close();
}

void WorkspaceFile::StoreIdentity(WorkspaceContainer& container) const
{
    // In one step: a file that has some of them would never be looked at again.
    container.SetMetadata(Properties::DocumentID, DocumentID);
    container.SetMetadata(Properties::InstanceID, InstanceID);
    if (!DerivedFrom.empty())
        container.SetMetadata(Properties::DerivedFrom, DerivedFrom);
}
