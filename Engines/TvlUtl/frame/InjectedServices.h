// What the injected callables ask of the subsystems above the frame, which fill it in as they load.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"
#include "windows/Types.h"

/// Answers of the language and the policy. Inert until they are given: 0, false, texts unchanged.
struct InjectedServices {
    int (*getLanguage)() = [] { return 0; };   // runs the language selection
    int (*getLanguagePath)(TvlString&) = [](TvlString&) { return 0; };
    int (*getLanguageDirName)(TvlString&) = [](TvlString&) { return 0; };
    LANGID (*getUILanguageId)() = []() -> LANGID { return 0x0409; };   // of the current language; English until then
    bool (*isNetworkInstall)() = [] { return false; };
    bool (*isInternetFeaturesDisabled)() = [] { return false; };
};

/// The process's services. Written while modules load, before any callable is called.
InjectedServices& TheInjectedServices();

/// Hands the callables to the sibling libraries. Stores them only: none of them runs here.
void ExposeDynamicEntryPointsToOtherLibraries();
