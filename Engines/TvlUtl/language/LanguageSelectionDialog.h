// The dialog that asks for the language.
#pragma once

#include "UILanguage.h"

/// Asks the user which of the installed languages to use, and stores whether to ask again. Waits for the answer.
/// @return the code, 0 when nothing was chosen, and whether the dialog was dealt with, which is always true
std::pair<CGlbLang, bool> RunLanguageSelectionDialog(IGLB_UILanguage& language);

/// Bytes of the dialog's template with the texts of one language, as LanguageCaptions gives them.
std::vector<BYTE> MakeLanguageDialogTemplate(const std::vector<TvlString>& captions);

/// Ids of the dialog's controls; IDOK is the button's.
enum LanguageDialogControl : int {
    kLanguageOk = 1,
    kLanguageIcon = 1002,
    kLanguageList = 1003,
    kLanguagePrompt = 1004,
    kLanguageAlwaysUse = 1005,
};
