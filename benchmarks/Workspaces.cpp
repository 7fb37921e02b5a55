// Workspace files beside libzip alone, which does the same reads and writes: the cost of looking an archive through before
// it is used, and of replacing it in one step.
#include "WorkspaceFile.h"
#include "WorkspaceManager.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/PrefManager.h"
#include "siblings/TvlPref/StoredRegistry.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <unistd.h>
#include <vector>
#include <zip.h>

namespace {

constexpr std::size_t kIconBytes = 4096;
constexpr std::size_t kInterfaceBytes = 400'000;

/// What a workspace holds beside its interface.
struct Contents {
    std::int64_t icons = 100;
    std::int64_t settingsBytes = 600'000;
    auto operator<=>(const Contents&) const = default;
};

/// Bytes that shrink to a third or so, as settings and pictures do.
std::string Content(std::size_t size, unsigned seed)
{
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& c : bytes)
        c = static_cast<char>('0' + random() % 8);
    return bytes;
}

class Workspace {
public:
    explicit Workspace(const Contents& contents)
        : m_folder(std::filesystem::temp_directory_path() / "bench-workspaces"
            / (std::to_string(contents.icons) + "-" + std::to_string(contents.settingsBytes)))
    {
        static MemoryPrefStore preferences;
        CAppPrefManager::GetInstance().AttachStore(&preferences);
        std::filesystem::create_directories(m_folder);
        std::ofstream(m_folder / "settings.ini", std::ios::binary)
            << Content(static_cast<std::size_t>(contents.settingsBytes), 1);
        const std::string interface = "<ui>" + Content(kInterfaceBytes, 2) + "</ui>";
        WorkspaceFile::CreateDefault(Path());
        WorkspaceContainer container = WorkspaceContainer::Open(Path(), ZipFile::OpenMode::ReadWrite);
        container.CreateFileW(L"content/workspace.xml", false, false, nullptr)
            .Write(interface.data(), interface.size());
        for (std::int64_t i = 0; i < contents.icons; ++i) {
            const std::string icon = Content(kIconBytes, static_cast<unsigned>(i + 3));
            const TvlString name = L"content/icons/" + TvlString(std::to_wstring(i)) + L".ico";
            container.CreateFileW(name, false, false, nullptr).Write(icon.data(), icon.size());
        }
        container.AddFile(L"content/settings.ini", Settings(), false, nullptr);
        container.Close();
    }

    TvlString Path() const { return TvlUtils::SystemIO::FromFilePath(m_folder / "a.tvws"); }
    TvlString Settings() const { return TvlUtils::SystemIO::FromFilePath(m_folder / "settings.ini"); }
    TvlString Target() const { return TvlUtils::SystemIO::FromFilePath(m_folder / "extracted.ini"); }
    std::string File() const { return (m_folder / "a.tvws").string(); }
    std::string TargetFile() const { return (m_folder / "extracted.ini").string(); }

private:
    std::filesystem::path m_folder;
};

const Workspace& TheWorkspace(const Contents& contents = {})
{
    static std::map<Contents, std::unique_ptr<const Workspace>> workspaces;
    auto& workspace = workspaces[contents];
    if (!workspace)
        workspace = std::make_unique<const Workspace>(contents);
    return *workspace;
}

const Workspace& WithIcons(const benchmark::State& state) { return TheWorkspace({.icons = state.range(0)}); }
const Workspace& WithSettings(const benchmark::State& state) { return TheWorkspace({.settingsBytes = state.range(0)}); }

/// An entry by libzip alone.
std::string ReadEntry(zip_t* archive, zip_uint64_t index)
{
    zip_stat_t description;
    zip_stat_index(archive, index, 0, &description);
    std::string bytes(description.size, '\0');
    zip_file_t* const file = zip_fopen_index(archive, index, 0);
    char end = 0;
    zip_fread(file, bytes.data(), bytes.size());
    zip_fread(file, &end, 1);   // compares the checksum
    zip_fclose(file);
    return bytes;
}

/// Flushes a file and puts it in another's place.
void Replace(const std::string& from, const std::string& to)
{
    const int descriptor = open(from.c_str(), O_RDONLY);
    fsync(descriptor);
    close(descriptor);
    std::filesystem::rename(from, to);
}

void WorkspaceMetadata_Own(benchmark::State& state)
{
    const TvlString path = WithIcons(state).Path();
    for (auto _ : state)
        benchmark::DoNotOptimize(WorkspaceFile(path).GetUIOrder());
}

void WorkspaceMetadata_Libzip(benchmark::State& state)
{
    const std::string file = WithIcons(state).File();
    for (auto _ : state) {
        zip_t* const archive = zip_open(file.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
        const auto index = zip_name_locate(archive, "metadata/metadata.xml", 0);
        WXmlDoc document(false);
        document.LoadBytes(ReadEntry(archive, static_cast<zip_uint64_t>(index)));
        benchmark::DoNotOptimize(document.IsLoaded());
        zip_discard(archive);
    }
}

void WorkspaceRead_Own(benchmark::State& state)
{
    const TvlString path = WithIcons(state).Path();
    for (auto _ : state) {
        const auto container = WorkspaceContainer::Open(path, ZipFile::OpenMode::Read);
        for (const TvlString& name : container.GetFileNames(L"content/.*", true))
            benchmark::DoNotOptimize(container.OpenFile(name, false));
    }
}

void WorkspaceRead_Libzip(benchmark::State& state)
{
    const std::string file = WithIcons(state).File();
    for (auto _ : state) {
        zip_t* const archive = zip_open(file.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
        for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i)
            if (std::string_view(zip_get_name(archive, static_cast<zip_uint64_t>(i), 0)).starts_with("content/"))
                benchmark::DoNotOptimize(ReadEntry(archive, static_cast<zip_uint64_t>(i)));
        zip_discard(archive);
    }
}

/// Extracts the settings of a workspace and stores them again, as a switch does.
void WorkspaceSwitch_Own(benchmark::State& state)
{
    const Workspace& workspace = WithSettings(state);
    WorkspaceFile file(workspace.Path());
    for (auto _ : state) {
        benchmark::DoNotOptimize(file.LoadSettings(workspace.Target(), {}));
        benchmark::DoNotOptimize(file.SaveSettings(workspace.Target(), {}));
    }
}

void WorkspaceSwitch_Libzip(benchmark::State& state)
{
    const Workspace& workspace = WithSettings(state);
    const std::string file = workspace.File();
    const std::string aside = file + ".peer";
    const std::string target = workspace.TargetFile();
    for (auto _ : state) {
        zip_t* archive = zip_open(file.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
        const auto index = zip_name_locate(archive, "content/settings.ini", 0);
        const std::string settings = ReadEntry(archive, static_cast<zip_uint64_t>(index));
        zip_discard(archive);
        std::ofstream(target + ".peer", std::ios::binary) << settings;
        Replace(target + ".peer", target);

        std::ifstream input(target, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(input), {}};
        // libzip replaces the file by itself, but does not flush: its own copy is flushed here.
        archive = zip_open(file.c_str(), ZIP_CHECKCONS, nullptr);
        zip_source_t* const source = zip_source_buffer(archive, bytes.data(), bytes.size(), 0);
        zip_file_add(archive, "content/settings.ini", source, ZIP_FL_OVERWRITE);
        zip_close(archive);
        const int descriptor = open(file.c_str(), O_RDONLY);
        fsync(descriptor);
        close(descriptor);
    }
}

/// Two workspaces of 1 MB with so many settings in a user's folder, a manager that changes between them, and a registry in
/// memory. One at a time.
class TwoWorkspaces {
public:
    explicit TwoWorkspaces(std::int64_t settingsCount)
    {
        constexpr int kOfSection = 20;

        setenv("TVL_USER_DIR", m_folder.c_str(), 1);
        setenv("TVL_SUITE_DIR", (m_folder / "suite").c_str(), 1);
        PREFUTILS::IRegistry::SetForTests(&m_registry);
        std::filesystem::create_directories(m_folder / "Workspaces");
        std::string settings;
        for (int section = 0; section < settingsCount / kOfSection; ++section) {
            settings += "[Section" + std::to_string(section) + "]\r\n";
            for (int i = 0; i < kOfSection; ++i)
                settings += "Name" + std::to_string(i) + "=" + Content(40, static_cast<unsigned>(i)) + "\r\n";
        }
        std::ofstream(m_folder / "Workspaces/settings.ini", std::ios::binary) << settings;
        for (const char* const name : {"a.tvws", "b.tvws"}) {
            std::filesystem::copy_file(
                TheWorkspace().File(), File(name), std::filesystem::copy_options::overwrite_existing);
            const TvlString path = TvlUtils::SystemIO::FromFilePath(File(name));
            WorkspaceFile(path).SaveSettings(Settings(), {});
            FillUp(path);
        }
        WSM_INIT init;
        init.Product = L"Suite";
        init.Application = L"Bench";
        manager.Initialize(init, nullptr);
        manager.SetCurrentWorkspace(L"a", false, false);
    }
    TwoWorkspaces(const TwoWorkspaces&) = delete;
    TwoWorkspaces& operator=(const TwoWorkspaces&) = delete;
    ~TwoWorkspaces() { PREFUTILS::IRegistry::SetForTests(nullptr); }

    std::string File(const char* name) const { return (m_folder / "Workspaces" / name).string(); }
    TvlString Settings() const { return TvlUtils::SystemIO::FromFilePath(File("settings.ini")); }

    WorkspaceManager manager;

private:
    /// Adds bytes that don't shrink, up to a file of 1 MB.
    static void FillUp(const TvlString& path)
    {
        std::mt19937 random(7);
        std::string bytes(1'000'000 - std::filesystem::file_size(TvlUtils::SystemIO::ToFilePath(path)), '\0');
        for (char& c : bytes)
            c = static_cast<char>(random());
        WorkspaceContainer container = WorkspaceContainer::Open(path, ZipFile::OpenMode::ReadWrite);
        container.CreateFileW(L"content/picture.bin", false, false, nullptr).Write(bytes.data(), bytes.size());
        container.Close();
    }

    std::filesystem::path m_folder = std::filesystem::temp_directory_path() / "bench-managers";
    PREFUTILS::StoredRegistry m_registry{PREFUTILS::MakeMemoryStore()};
};

/// From one workspace to the other, with all that the application's preferences need.
void WorkspaceManagerSwitch_Own(benchmark::State& state)
{
    TwoWorkspaces workspaces(state.range(0));
    WorkspaceManager& manager = workspaces.manager;
    bool toB = true;
    for (auto _ : state) {
        benchmark::DoNotOptimize(manager.SetCurrentWorkspace(toB ? L"b" : L"a", false, false));
        toB = !toB;
    }
}

/// What a switch writes beside the archives by the system's calls, with the same flushes.
void FlushPath(const std::string& path)
{
    const int descriptor = open(path.c_str(), O_RDONLY);
    fsync(descriptor);
    close(descriptor);
}

void WriteFlushed(const std::string& path, std::string_view bytes)
{
    const std::string aside = path + ".aside";
    std::ofstream(aside, std::ios::binary) << bytes;
    Replace(aside, path);
    FlushPath(std::filesystem::path(path).parent_path());
}

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(std::filesystem::file_size(path)), '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

/// Each line "name=value" becomes a value of its section's key, below a key that was emptied first.
void StoreSettings(PREFUTILS::IRegistry& registry, const std::string& settings)
{
    const HKEY user = PREFUTILS::RegistryRoot(0x80000001);
    const std::wstring target = L"SOFTWARE\\Peer\\Application Preferences";
    registry.RegDeleteKeyW(user, target.c_str());
    HKEY key = nullptr;
    std::istringstream lines(settings);
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r'))
            line.pop_back();
        if (line.starts_with('[')) {
            if (key)
                registry.RegCloseKey(key);
            const std::wstring section = target + L"\\" + TvlPlatform::FromUtf8(line.substr(1, line.size() - 2));
            registry.RegCreateKeyExW(
                user, section.c_str(), 0, nullptr, 0, PREFUTILS::kRegistryReadWrite, nullptr, &key, nullptr);
        } else if (const std::size_t equals = line.find('='); equals != line.npos) {
            const std::wstring name = TvlPlatform::FromUtf8(line.substr(0, equals));
            const std::wstring value = TvlPlatform::FromUtf8(line.substr(equals + 1));
            registry.RegSetValueExW(key, name.c_str(), 0, PREFUTILS::kRegistryText,
                reinterpret_cast<const BYTE*>(value.data()), static_cast<DWORD>(value.size() * sizeof(wchar_t)));
        }
    }
    registry.RegCloseKey(key);
}

/// A workspace takes the settings file in, as libzip replaces a file. It does not flush: that is done here.
void StoreEntry(const std::string& archive, const std::string& settings)
{
    zip_t* const changed = zip_open(archive.c_str(), ZIP_CHECKCONS, nullptr);
    zip_source_t* const source = zip_source_buffer(changed, settings.data(), settings.size(), 0);
    zip_file_add(changed, "content/settings.ini", source, ZIP_FL_OVERWRITE);
    zip_close(changed);
    FlushPath(archive);
    FlushPath(std::filesystem::path(archive).parent_path());
}

std::string LoadEntry(const std::string& archive)
{
    zip_t* const opened = zip_open(archive.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
    std::string settings =
        ReadEntry(opened, static_cast<zip_uint64_t>(zip_name_locate(opened, "content/settings.ini", 0)));
    zip_discard(opened);
    return settings;
}

/// A file that stands beside the settings as long as they are being replaced.
class Mark {
public:
    explicit Mark(std::string path) : m_path(std::move(path))
    {
        close(open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666));
    }
    Mark(const Mark&) = delete;
    Mark& operator=(const Mark&) = delete;
    ~Mark() { unlink(m_path.c_str()); }

private:
    std::string m_path;
};

/// The same by libzip and the system's calls alone: the settings file into the one workspace, the other's out of it and
/// into the registry, and what is noted beside them.
void WorkspaceManagerSwitch_Libzip(benchmark::State& state)
{
    const TwoWorkspaces workspaces(state.range(0));
    const std::string files[] = {workspaces.File("a.tvws"), workspaces.File("b.tvws")};
    const std::string settings = workspaces.File("peer.ini");
    PREFUTILS::StoredRegistry registry{PREFUTILS::MakeMemoryStore()};
    WriteFlushed(settings, LoadEntry(files[0]));
    std::size_t current = 0;
    for (auto _ : state) {
        StoreEntry(files[current], ReadFile(settings));
        current = 1 - current;
        const Mark extracting(settings + ".extracting");
        WriteFlushed(settings, LoadEntry(files[current]));
        WriteFlushed(settings + ".origin", files[current]);
        const Mark applying(settings + ".applying");
        StoreSettings(registry, ReadFile(settings));
    }
}

void Icons(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("icons")->Arg(25)->Arg(75)->Arg(225)->Arg(675);
}

void SettingsBytes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("bytes")->Arg(40'000)->Arg(160'000)->Arg(640'000)->Arg(2'560'000);
}

void SettingsCount(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("settings")->Arg(30)->Arg(120)->Arg(480)->Arg(1'920)->Arg(6'400);
}

BENCHMARK(WorkspaceMetadata_Own)->Apply(Icons);
BENCHMARK(WorkspaceMetadata_Libzip)->Apply(Icons);
BENCHMARK(WorkspaceRead_Own)->Apply(Icons);
BENCHMARK(WorkspaceRead_Libzip)->Apply(Icons);
BENCHMARK(WorkspaceSwitch_Own)->Apply(SettingsBytes);
BENCHMARK(WorkspaceSwitch_Libzip)->Apply(SettingsBytes);
BENCHMARK(WorkspaceManagerSwitch_Own)->Apply(SettingsCount);
BENCHMARK(WorkspaceManagerSwitch_Libzip)->Apply(SettingsCount);

}   // namespace
