// Containers of workspaces from any bytes: their table, properties and entries.
#include "WorkspaceFile.h"
#include "siblings/TvlPref/PrefManager.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

namespace {
/// A folder and preferences of the process's own.
class Scratch {
public:
    Scratch()
    {
        std::filesystem::create_directories(m_folder);
        CAppPrefManager::GetInstance().AttachStore(&m_preferences);
        TvlUtils::SetLogReceiver([](TvlUtils::LogLevel, const TvlString&) {});
    }
    ~Scratch()
    {
        CAppPrefManager::GetInstance().AttachStore(nullptr);
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    TvlString Path(const char* name) const { return TvlUtils::SystemIO::FromFilePath(m_folder / name); }

private:
    // Several processes may fuzz at a time.
    std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() / ("fuzz-container-" + std::to_string(std::random_device()()));
    MemoryPrefStore m_preferences;
};

void UseEntries(const TvlString& path, const TvlString& target)
{
    auto container = WorkspaceContainer::Open(path, ZipFile::OpenMode::ReadWrite);
#ifdef FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION
    constexpr long long kMost = 1 << 20;   // bytes; more of them take no other way, only time
#else
    constexpr long long kMost = 64 << 20;   // as workspaces may have
#endif
    container.SetMaxEntryBytes(kMost);
    for (const TvlString& name : container.GetFileNames(L".*", true)) {
        const bool isRead = static_cast<bool>(container.OpenFile(name, false));
        if (container.ExtractFile(name, target) != isRead)
            std::abort();
    }
    if (!container)
        return;
    // What opens can be written, and opens again.
    container.SetStringMetadata(ZipContainerSchema::Metadata::Title, L"de", L"Titel");
    if (!container.Close() || !WorkspaceContainer::Open(path, ZipFile::OpenMode::Read))
        std::abort();
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Scratch scratch;
    const TvlString path = scratch.Path("a.tvws");
    if (!TvlUtils::SystemIO::File::WriteAside(path, {reinterpret_cast<const char*>(data), size}))
        std::abort();   // a run that reads nothing finds nothing
    UseEntries(path, scratch.Path("extracted"));
    WorkspaceFile file(path);
    file.InitializeMetadata();
    file.GetTitleInUILang();
    WorkspaceFileExportSettings settings;
    WorkspaceFile::ReadExportSettings(path, settings);
    return 0;
}
