#include "TvlTestKit/TemporarySuite.h"

#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"

namespace fs = std::filesystem;

namespace TvlTestKit {

TemporarySuite::TemporarySuite(Content content)
{
    if (content == Content::Copy)
        fs::copy(TvlUtils::SystemIO::ToFilePath(TvlConfig::GetSuiteDir()), Path(),
            fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    m_environment.variables[L"TVL_SUITE_DIR"] = Path().wstring();
    Framework::Resources::SetLanguageFolder(L"EN");
}

TemporarySuite::~TemporarySuite()
{
    m_environment.variables.erase(L"TVL_SUITE_DIR");
    Framework::Resources::SetLanguageFolder(L"EN");
}

void TemporarySuite::Write(const std::string& name, const std::string& bytes) const
{
    WriteFileBytes(Path() / name, bytes);
    Framework::Resources::SetLanguageFolder(L"EN");
}

}   // namespace TvlTestKit
