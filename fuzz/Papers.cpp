// The store of papers on any file, through reading, asking and saving.
#include "PaperTypes.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Environment.h"

#include <cstdint>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {
/// A user's folder of the process's own.
class ScratchEnvironment final : public Ports::Environment {
public:
    ScratchEnvironment()
        : m_folder(std::filesystem::temp_directory_path() / ("fuzz-papers-" + std::to_string(std::random_device()()))),
          m_system(Ports::Environment::Get())
    {
        std::filesystem::create_directories(m_folder);
        SetForTests(this);
        TvlUtils::SetLogReceiver([](TvlUtils::LogLevel, const TvlString&) {});
    }
    ~ScratchEnvironment() override
    {
        SetForTests(nullptr);
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        return name == L"TVL_USER_DIR" ? m_folder.wstring() : m_system.Variable(name);
    }
    bool IsSandboxed() const override { return false; }

private:
    std::filesystem::path m_folder;   // several processes may fuzz at a time
    const Ports::Environment& m_system;
};
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchEnvironment environment;
    using namespace TvlUtils::SystemIO;
    const TvlString path = Path::Combine(GetUserProfileConfigDir(), L"PaperTypes.xml");
    static_cast<void>(File::WriteAside(path, {reinterpret_cast<const char*>(data), size}));
    try {
        CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
        PaperTypeInformation paper;
        for (int index = 0; papers.GetPaperInfoAt(index, paper); ++index)
            TvlUtl::GetPageDimensions(paper);
        papers.AddCustomPaper(paper, true);
        papers.DeletePaper(paper);
        papers.AddMRUItem(0);
        CPaperTypeMgr::Shutdown();
        CPaperTypeMgr::ReleaseInstance(false);
    } catch (const std::out_of_range&) {
        // An id beyond the number of papers.
    }
    return 0;
}
