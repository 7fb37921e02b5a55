// Chooses its language when the others do: language_process NUMBER. It is ready when it sets the event "ready-NUMBER",
// waits for "start", and prints the language, with "asked" before it when it showed the dialog. The answer is French.
#include "FakeDialogs.h"
#include "UILanguage.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "windows/Modules.h"

#include <iostream>

int main()
{
    using TvlUtils::InterProcessEvent;
    const auto arguments = Ports::Modules::Get().Arguments();
    const auto ready = InterProcessEvent::openEvent(L"language-ready-" + TvlString(arguments.at(0)));
    const auto start = InterProcessEvent::openEvent(L"language-start");
    // Held from now on: who comes late still learns that the others were asked.
    const auto shown = InterProcessEvent::createEvent(L"SOFTWARE-Tovel-Suite-UILangDlgShown", 0, 0);
    if (!ready || !start || !shown)
        return 1;
    FakeDialogs dialogs;
    dialogs.answer = [](FakeDialogWindow& window) {
        const auto french = std::find(window.choices.begin(), window.choices.end(), L"French");
        window.selected = static_cast<int>(french - window.choices.begin());
        return french != window.choices.end();
    };
    ready->set();
    constexpr DWORD kLongest = 120000;   // milliseconds
    if (!start->wait(kLongest))
        return 1;
    const CGlbLang language = IGLB_UILanguage::GetInst().GetLanguage();
    std::cout << (dialogs.shown ? "asked " : "") << TvlPlatform::ToUtf8(language.GetIO_StrFmt().Std());
    return 0;
}
