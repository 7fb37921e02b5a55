// Texts of the user interface that a test chooses, in the place of the installed ones as long as the object lives.
#pragma once

#include "ChildProcess.h"
#include "FakeEnvironment.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"

#include <fstream>

class ScratchTexts {
public:
    /// @param json content of the only file of texts
    explicit ScratchTexts(const char* json)
    {
        const auto texts = m_suite.Path() / "Languages" / "EN" / "Data" / "Texts";
        std::filesystem::create_directories(texts);
        std::ofstream(texts / "texts.json", std::ios::binary) << json;
        Framework::Resources::SetLanguageFolder(L"EN");
    }
    ScratchTexts(const ScratchTexts&) = delete;
    ScratchTexts& operator=(const ScratchTexts&) = delete;
    ~ScratchTexts()
    {
        Ports::Environment::SetForTests(nullptr);
        Framework::Resources::SetLanguageFolder(L"EN");
    }

private:
    ScratchFolder m_suite;
    FakeEnvironment m_environment{{{L"TVL_SUITE_DIR", TvlUtils::SystemIO::FromFilePath(m_suite.Path()).Std()}}};
};
