// A value out of a profile file beside GLib's reader of such files: each reads the whole file for it, as the calls do that
// applications use.
#include "windows/ProfileFiles.h"
#include "siblings/TvlUtils/FilePath.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <glib.h>
#include <string>

namespace {

constexpr int kKeys = 20;   // of a section
constexpr DWORD kSize = 260;

/// A file of sections with 20 keys each; the last value of the last one is asked for.
class ProfileFile {
public:
    explicit ProfileFile(std::int64_t sections) : m_section("Section" + std::to_string(sections - 1))
    {
        std::ofstream file(m_path, std::ios::binary);
        for (std::int64_t section = 0; section < sections; ++section) {
            file << "[Section" << section << "]\r\n";
            for (int key = 0; key < kKeys; ++key)
                file << "Name" << key << "=a text of some length that settings have\r\n";
        }
    }
    ProfileFile(const ProfileFile&) = delete;
    ProfileFile& operator=(const ProfileFile&) = delete;
    ~ProfileFile()
    {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    const std::filesystem::path& Path() const { return m_path; }
    const std::string& Section() const { return m_section; }

private:
    std::filesystem::path m_path = std::filesystem::temp_directory_path() / "bench-profile.ini";
    std::string m_section;
};

void ProfileValue_Own(benchmark::State& state)
{
    const ProfileFile file(state.range(0));
    const TvlString path = TvlUtils::SystemIO::FromFilePath(file.Path());
    const std::wstring section(file.Section().begin(), file.Section().end());
    const Ports::ProfileFiles& files = Ports::ProfileFiles::Get();
    wchar_t buffer[kSize];
    for (auto _ : state)
        if (files.GetText(section.c_str(), L"Name19", nullptr, buffer, kSize, path.c_str()) == 0)
            state.SkipWithError("the value was not found");
}

void ProfileValue_KeyFile(benchmark::State& state)
{
    const ProfileFile file(state.range(0));
    for (auto _ : state) {
        GKeyFile* const values = g_key_file_new();
        g_key_file_load_from_file(values, file.Path().c_str(), G_KEY_FILE_NONE, nullptr);
        gchar* const value = g_key_file_get_string(values, file.Section().c_str(), "Name19", nullptr);
        if (!value)
            state.SkipWithError("the value was not found");
        g_free(value);
        g_key_file_free(values);
    }
}

BENCHMARK(ProfileValue_Own)->ArgName("sections")->Arg(1)->Arg(8)->Arg(64)->Arg(512);
BENCHMARK(ProfileValue_KeyFile)->ArgName("sections")->Arg(1)->Arg(8)->Arg(64)->Arg(512);

}   // namespace
