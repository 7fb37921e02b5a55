#include "WorkspacesPage.h"

#include "ControlIds.h"

#include <commctrl.h>

namespace {
// What each result means to the user, by its number.
constexpr const wchar_t* kResults[] = {L"done", L"it can't be read", L"there are no workspaces",
    L"the name is taken, or can't be the name of a file", L"there is no such workspace", L"a default workspace stays",
    L"its file can't be written", L"the change was given up"};

constexpr int kMarkWidth = 24;
constexpr int kTitleWidth = 130;
constexpr int kCategoryWidth = 110;
constexpr int kDescriptionWidth = 360;
}   // namespace

WorkspacesPage::WorkspacesPage(HWND parent) : Page(parent), m_session(GetAncestor(parent, GA_ROOT))
{
    AddLabel(L"&Workspaces:", {16, 12, 300, 18});
    const HWND list = Add(WC_LISTVIEWW, L"", WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
        kWorkspaceList, {16, 32, 640, 250});
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
    AddColumns(list,
        {{L"", kMarkWidth}, {L"Title", kTitleWidth}, {L"Category", kCategoryWidth},
            {L"Description", kDescriptionWidth}});
    AddButton(L"&Switch", kWorkspaceSwitch, {16, 296, 100, 26});
    AddButton(L"&Delete", kWorkspaceDelete, {124, 296, 100, 26});
    AddLabel(L"&New, from the current one:", {256, 300, 170, 18});
    AddEdit(L"", kWorkspaceName, {428, 297, 120, 24});
    AddButton(L"&Create", kWorkspaceCreate, {556, 296, 100, 26});
    AddLabel(L"", {16, 338, 640, 40}, kWorkspaceTold);
    FillList();
}

void WorkspacesPage::FillList()
{
    const HWND list = Control(kWorkspaceList);
    const TvlString current = m_session.Current();
    m_workspaces = m_session.Workspaces();
    ListView_DeleteAllItems(list);
    int row = 0;
    for (const WorkspaceFile& file : m_workspaces) {
        const bool isCurrent = file.GetName() == current;
        AddListRow(list,
            {isCurrent ? L"\u2022" : L"", file.GetTitleInUILang().c_str(), file.GetCategoryInUILang().c_str(),
                file.GetDescriptionInUILang().c_str()});
        if (isCurrent)
            ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        ++row;
    }
    TvlString told;
    told.Format(L"Current: %s. Preferences in its settings: %lu. Told of changes: %d times.", current.c_str(),
        static_cast<ULONG>(m_session.PreferenceCount()), m_session.TimesTold());
    SetText(kWorkspaceTold, told.c_str());
}

TvlString WorkspacesPage::Chosen() const
{
    const int row = ListView_GetNextItem(Control(kWorkspaceList), -1, LVNI_SELECTED);
    return row < 0 || static_cast<std::size_t>(row) >= m_workspaces.size()
        ? TvlString()
        : m_workspaces[static_cast<std::size_t>(row)].GetName();
}

void WorkspacesPage::Tell(const wchar_t* operation, const TvlString& name, WorkspaceSession::Result result)
{
    FillList();
    const auto number = static_cast<std::size_t>(result);
    TvlString told;
    told.Format(L"%s %s: %s. %s", operation, name.c_str(), number < std::size(kResults) ? kResults[number] : L"unknown",
        Text(kWorkspaceTold).c_str());
    SetText(kWorkspaceTold, told.c_str());
}

void WorkspacesPage::SwitchToChosen()
{
    if (const TvlString name = Chosen(); !name.IsEmpty())
        Tell(L"Switch to", name, m_session.Switch(name));
}

void WorkspacesPage::TakeEnter()
{
    if (GetFocus() == Control(kWorkspaceName))
        OnCommand(kWorkspaceCreate, BN_CLICKED);
    else
        SwitchToChosen();
}

void WorkspacesPage::OnCommand(int id, int)
{
    if (id == kWorkspaceSwitch)
        SwitchToChosen();
    else if (const TvlString name = Chosen(); id == kWorkspaceDelete && !name.IsEmpty())
        Tell(L"Delete", name, m_session.Delete(name));
    else if (const TvlString wanted(Text(kWorkspaceName)); id == kWorkspaceCreate && !wanted.IsEmpty())
        Tell(L"Create", wanted, m_session.Create(wanted));
}

LRESULT WorkspacesPage::OnNotify(const NMHDR& notice)
{
    if (notice.idFrom == kWorkspaceList && notice.code == NM_DBLCLK)
        SwitchToChosen();
    return 0;
}
