// Which language the applications speak here, why, and where its files lie. Nobody is asked.
#include "UILanguage.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"

#include <iostream>

int main()
{
    const auto silent = IGLB_UILanguage::CreateSilentEvent();   // keeps the dialog away while it lives and is set
    if (silent)
        silent->set();
    IGLB_UILanguage& ui = IGLB_UILanguage::GetInst();
    std::vector<std::pair<CGlbLang, TvlString>> languages;
    ui.GetLanguages(languages);
    std::cout << languages.size() << " languages:";
    for (const auto& [language, name] : languages)
        std::cout << ' ' << TvlPlatform::ToUtf8(language.GetIO_StrFmt());
    std::cout << '\n';

    // Folders are known once a language is chosen.
    TvlString folder;
    std::cout << "before the choice: " << ui.GetLanguagePath(folder) << '\n';
    const CGlbLang chosen = ui.GetLanguage();
    ui.GetLanguagePath(folder);
    std::cout << "chosen: " << TvlPlatform::ToUtf8(chosen.GetIO_StrFmt()) << ", Windows id " << chosen.GetWinLangID()
              << ", folder " << TvlUtils::SystemIO::ToFilePath(folder).filename().string() << '\n';
    const std::vector<TvlUtl::UILanguageStep> steps = TvlUtl::GetUILanguageSteps();
    std::cout << "looked at first: " << TvlPlatform::ToUtf8(steps.front().step) << '\n';
}
