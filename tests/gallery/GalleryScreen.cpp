#include "GalleryScreen.h"

#include "windows/Locale.h"

#include <commctrl.h>
#include <future>

namespace {
constexpr auto kPatience = std::chrono::seconds(60);
constexpr auto kPause = std::chrono::milliseconds(10);
constexpr UINT kAnswerTime = 60000;   // milliseconds

INPUT KeyInput(WORD key, WORD scan, DWORD flags)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = scan;
    input.ki.dwFlags = flags;
    return input;
}

void SendInputs(std::vector<INPUT> inputs)
{
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}
}   // namespace

GalleryScreen::GalleryScreen()
{
    std::promise<HWND> made;
    m_thread = std::thread([this, &made] {
        m_threadId = GetCurrentThreadId();
        Ports::Locale::Get().UseLocale(L"de-DE");
        MainWindow window(0);
        SetForegroundWindow(window.Window());
        made.set_value(window.Window());
        window.Run();
    });
    const HWND window = made.get_future().get();
    if (Waits([&] { return IsWindowVisible(window) && GetForegroundWindow() == window; }))
        m_window = window;
    else
        PostMessageW(window, WM_CLOSE, 0, 0);
}

GalleryScreen::~GalleryScreen()
{
    PostMessageW(m_window, WM_CLOSE, 0, 0);
    m_thread.join();
}

bool GalleryScreen::Waits(const std::function<bool()>& holds)
{
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(kPause);
    }
    return true;
}

HWND GalleryScreen::ShownPage() const
{
    HWND page = nullptr;
    while ((page = FindWindowExW(m_window, page, L"TvlGalleryPage", nullptr)))
        if (IsWindowVisible(page))
            return page;
    return nullptr;
}

HWND GalleryScreen::Control(int id) const { return GetDlgItem(ShownPage(), id); }

bool GalleryScreen::GoTo(const wchar_t* page)
{
    const HWND tabs = GetDlgItem(m_window, kTabs);
    const auto number = static_cast<LRESULT>(PageNumber(page));
    const auto shown = [tabs] { return SendMessageW(tabs, TCM_GETCURSEL, 0, 0); };
    for (LRESULT before = shown(); before != number; before = shown()) {
        Press(VK_NEXT, VK_CONTROL);
        if (!Waits([&] { return shown() != before; }))
            return false;
    }
    return Waits([this] { return Focus() > 0; });
}

std::wstring GalleryScreen::TextOf(HWND control)
{
    std::wstring text(1024, L'\0');
    DWORD_PTR length = 0;
    SendMessageTimeoutW(
        control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), SMTO_NORMAL, kAnswerTime, &length);
    text.resize(length);
    return text;
}

LRESULT GalleryScreen::Send(int id, UINT message, WPARAM first, LPARAM second) const
{
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(Control(id), message, first, second, SMTO_NORMAL, kAnswerTime, &answer);
    return static_cast<LRESULT>(answer);
}

int GalleryScreen::Focus() const
{
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(m_threadId, &info) && info.hwndFocus ? GetDlgCtrlID(info.hwndFocus) : 0;
}

bool GalleryScreen::Click(int id) const
{
    Send(id, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    Send(id, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    return Waits([this, id] { return Focus() == id; });
}

void GalleryScreen::Type(int id, const wchar_t* text) const
{
    Click(id);
    Send(id, EM_SETSEL, 0, -1);
    std::vector<INPUT> inputs;
    for (const wchar_t* c = text; *c; ++c) {
        inputs.push_back(KeyInput(0, static_cast<WORD>(*c), KEYEVENTF_UNICODE));
        inputs.push_back(KeyInput(0, static_cast<WORD>(*c), KEYEVENTF_UNICODE | KEYEVENTF_KEYUP));
    }
    SendInputs(std::move(inputs));
    Await(id, text);
}

void GalleryScreen::Press(WORD key, WORD with)
{
    std::vector<INPUT> inputs{KeyInput(key, 0, 0), KeyInput(key, 0, KEYEVENTF_KEYUP)};
    if (with) {
        inputs.insert(inputs.begin(), KeyInput(with, 0, 0));
        inputs.push_back(KeyInput(with, 0, KEYEVENTF_KEYUP));
    }
    SendInputs(std::move(inputs));
}

std::wstring GalleryScreen::Await(int id, const std::wstring& text) const
{
    Waits([&] { return Text(id) == text; });
    return Text(id);
}

std::wstring GalleryScreen::Cell(int list, int row, int column) const { return ListCell(Control(list), row, column); }
