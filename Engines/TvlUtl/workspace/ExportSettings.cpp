#include "ExportSettings.h"

#include "WorkspaceAccess.h"

namespace {
using Item = WorkspaceFileExportSettings::Item;

/// A list of items: the element around them, that of each, and where it is kept.
struct ListRow {
    const wchar_t* plural;
    const wchar_t* singular;
    std::vector<Item> WorkspaceFileExportSettings::*items;
};

// In the file's order.
constexpr ListRow kLists[] = {
    {L"toolbars", L"toolbar", &WorkspaceFileExportSettings::Toolbars},
    {L"menus", L"menu", &WorkspaceFileExportSettings::Menus},
    {L"statusbars", L"statusbar", &WorkspaceFileExportSettings::Statusbars},
    {L"touchbars", L"touchbar", &WorkspaceFileExportSettings::Touchbars},
};

struct OptionRow {
    const wchar_t* name;
    bool WorkspaceFileExportSettings::*value;
};

constexpr OptionRow kOptions[] = {
    {L"exportShortcutKeys", &WorkspaceFileExportSettings::ExportShortcutKeys},
    {L"exportDockers", &WorkspaceFileExportSettings::ExportDockers},
    {L"exportApplicationData", &WorkspaceFileExportSettings::ExportApplicationData},
};

void WriteList(const WXmlNode& root, const ListRow& list, const std::vector<Item>& items)
{
    const WXmlNode parent = root.CreateChild(list.plural, nullptr);
    for (const Item& item : items) {
        const WXmlNode node = parent.CreateChild(list.singular, nullptr);
        node.Attribute(L"selected").SetBool(item.Selected);
        node.Attribute(L"guid").SetString(item.Guid);
        node.Attribute(L"name").SetString(item.Name);
    }
}
}   // namespace

bool WriteExportSettings(const WorkspaceFileExportSettings& settings, WXmlDoc& document)
{
    const TvlString text = TvlString().Format(L"<workspaceExportSettings name='%s' framework='%s' version='%s'/>",
        settings.Name.Std(), settings.Framework.Std(), settings.Version.Std());
    if (!document.CreateFromString(text))
        return false;
    const WXmlNode root = document.GetRootNode();
    for (const ListRow& list : kLists)
        WriteList(root, list, settings.*list.items);
    const WXmlNode options = root.CreateChild(L"options", nullptr);
    for (const OptionRow& option : kOptions)
        options.Attribute(option.name).SetBool(settings.*option.value);
    return true;
}

void ReadExportDocument(const WXmlDoc& document, WorkspaceFileExportSettings& settings)
{
    const WXmlNode root = document.GetRootNode();
    settings.Name = root.Attribute(L"name").GetString(L"");
    settings.Framework = root.Attribute(L"framework").GetString(L"");
    settings.Version = root.Attribute(L"version").GetString(L"");
    for (const ListRow& list : kLists) {
        WXmlNodeList nodes;
        root.GetNodes(WXPath(TvlString(L"./") + list.plural + L"/" + list.singular), nodes);
        for (const WXmlNode& node : nodes)
            (settings.*list.items)
                .push_back({node.Attribute(L"selected").GetBool(false), node.Attribute(L"guid").GetString(L""),
                    node.Attribute(L"name").GetString(L"")});
    }
    const WXmlNode options = root.GetNode(WXPath(L"options"));
    for (const OptionRow& option : kOptions)
        settings.*option.value = options.Attribute(option.name).GetBool(false);
}

bool WorkspaceFile::ReadExported(WorkspaceContainer& container, WorkspaceFileExportSettings& settings)
{
    const TvlString entry = ContentPath(WorkspaceContainerSchema::exportSettingsFile);
    // Most workspaces have none: nothing to be said of in the log.
    if (!container.DoesFileExist(entry))
        return false;
    TvlUtils::Stream stream = container.OpenFile(entry, false);
    WXmlDoc document(false);
    if (!stream || !document.CreateFromStream(stream))
        return false;
    ReadExportDocument(document, settings);
    constexpr LONG kRead = 2;
    settings.ReadState = kRead;
    return true;
}

bool WorkspaceFile::ReadExportSettings(const TvlString& path, WorkspaceFileExportSettings& settings)
{
    settings.ReadState = 0;
    WorkspaceContainer container = OpenWorkspaceForReading(path);
    return container && ReadExported(container, settings);
}
