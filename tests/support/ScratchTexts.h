// Texts of the user interface that a test chooses, in the place of the installed ones as long as the object lives.
#pragma once

#include "ChildProcess.h"
#include "FakeEnvironment.h"
#include "TvlTestKit/TemporarySuite.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"

#include <fstream>

class ScratchTexts {
public:
    /// @param json content of the only file of texts
    explicit ScratchTexts(const char* json) { m_suite.Write("Languages/EN/Data/Texts/texts.json", json); }

private:
    TvlTestKit::TemporarySuite m_suite{TvlTestKit::TemporarySuite::Content::Nothing};
};
