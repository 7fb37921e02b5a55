// A dialog without a screen: keeps what is done to it, and is answered by the test.
#pragma once

#include "windows/Dialogs.h"

#include <algorithm>
#include <cwchar>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// A dialog's window with controls of given sizes, two pixels to a dialog unit at every resolution.
class FakeDialogWindow : public Ports::DialogWindow {
public:
    bool HasControl(int id) const override { return id != 0 && places.contains(id); }
    Ports::DialogParameter Send(
        int id, UINT message, Ports::DialogParameter first, Ports::DialogParameter second) override
    {
        calls.push_back("send " + std::to_string(message) + " to " + std::to_string(id));
        const auto* const text = reinterpret_cast<const wchar_t*>(second);
        switch (message) {
        case Ports::kComboAddString:
            choices.emplace_back(text);
            return static_cast<Ports::DialogParameter>(choices.size()) - 1;
        case Ports::kComboFindStringExact: {
            const auto found = std::find(choices.begin(), choices.end(), text);
            return found == choices.end() ? -1 : found - choices.begin();
        }
        case Ports::kComboSetSelection:
            return selected = static_cast<int>(first);
        case Ports::kComboGetSelection:
            return selected;
        case Ports::kComboGetTextLength:
            return static_cast<Ports::DialogParameter>(choices[static_cast<std::size_t>(first)].size());
        case Ports::kComboGetText:
            std::wcscpy(reinterpret_cast<wchar_t*>(second), choices[static_cast<std::size_t>(first)].c_str());
            return 0;
        case Ports::kSetCheck:
            return checked = first != 0;
        case Ports::kGetCheck:
            return checked;
        default:
            return 0;
        }
    }
    void EnableSystemMenuItem(UINT item, UINT flags) override
    {
        calls.push_back("menu " + std::to_string(item) + " " + std::to_string(flags));
    }
    Ports::DialogRect MapUnits(const Ports::DialogRect& units) const override
    {
        return {2 * units.left, 2 * units.top, 2 * units.width, 2 * units.height};
    }
    Ports::DialogRect Place(int id) const override { return places.at(id); }
    Ports::DialogRect ClientArea() const override { return {0, 0, places.at(0).width, places.at(0).height}; }
    void Move(int id, const Ports::DialogRect& place) override { places.at(id) = place; }
    Ports::DialogRect TextSize(int id) const override
    {
        return {0, 0, textWidths.count(id) ? textWidths.at(id) : 10, 16};
    }
    bool CreateComboBox(int id, DWORD style, const Ports::DialogRect& place) override
    {
        calls.push_back("combo " + std::to_string(id) + " " + std::to_string(style));
        return places.emplace(id, place).second;
    }
    void DestroyControl(int id) override { places.erase(id); }
    void Focus(int id) override { calls.push_back("focus " + std::to_string(id)); }
    int Dpi() const override { return dpi; }

    std::map<int, Ports::DialogRect> places{{0, {50, 50, 420, 164}}, {1, {306, 120, 100, 30}}, {1002, {14, 16, 32, 32}},
        {1004, {68, 16, 338, 20}}, {1005, {68, 82, 338, 22}}};
    std::map<int, int> textWidths;
    int dpi = 96;
    std::vector<std::string> calls;
    std::vector<std::wstring> choices;
    int selected = -1;
    bool checked = false;
};

/// In the system's place as long as it lives.
class FakeDialogs : public Ports::Dialogs {
public:
    FakeDialogs() { SetForTests(this); }
    FakeDialogs(const FakeDialogs&) = delete;
    FakeDialogs& operator=(const FakeDialogs&) = delete;
    ~FakeDialogs() override { SetForTests(nullptr); }

    bool RunModal(const std::vector<BYTE>& bytes, HWND, Ports::DialogProcedure& procedure) override
    {
        ++shown;
        dialogTemplate = bytes;
        procedure.OnInitDialog(window);
        const bool confirmed = answer(window);
        if (confirmed)
            procedure.OnOK(window);
        procedure.OnDestroy(window);
        return confirmed;
    }
    void* LoadStockIcon(int icon, int, int) override
    {
        window.calls.push_back("icon " + std::to_string(icon));
        ++handles;
        return &handles;
    }
    void DestroyIcon(void*) override { --handles; }
    void* CreatePointFont(int size, const std::wstring&) override
    {
        window.calls.push_back("font " + std::to_string(size));
        ++handles;
        return &handles;
    }
    void DeleteFont(void*) override { --handles; }

    /// What the user does; false ends the dialog without its button.
    std::function<bool(FakeDialogWindow&)> answer = [](FakeDialogWindow&) { return false; };
    FakeDialogWindow window;
    std::vector<BYTE> dialogTemplate;
    int shown = 0;
    int handles = 0;   // that were not given back
};
