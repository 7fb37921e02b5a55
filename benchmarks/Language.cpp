// Choosing the language among many beside reading their descriptions twice.
#include "GLB_UILanguage.h"
#include "siblings/TvlPref/StoredRegistry.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <random>
#include <stdlib.h>
#include <string>
#include <vector>

namespace {
namespace fs = std::filesystem;

constexpr int kBrokenEach = 4;   // every fourth is broken

/// A suite with many languages in a folder of its own, a registry in memory, and no folder of anybody's touched.
class ManyLanguages {
public:
    explicit ManyLanguages(std::int64_t count)
    {
        for (int i = 0; i < count; ++i) {
            const std::string code =
                std::string(1, static_cast<char>('A' + i / 100)) + std::to_string(100 + i % 100).substr(1);
            const fs::path data = m_folder / "Languages" / code / "Data";
            fs::create_directories(data);
            std::ofstream file(data / "info.json", std::ios::binary);
            if (i % kBrokenEach == 0)
                file << "{\"langCode\": \"" << code << "\", \"dirName";
            else
                file << R"({"langCode": ")" << code << R"(", "dirName": ")" << code << R"(", "uiName": "Language"})";
            m_files.push_back(data / "info.json");
        }
        Use();
        CGlbLang stored;
        stored.SetFromIO_StrFmt(L"A22");
        IGLB_UILanguage::GetInst().WriteStoredLanguage(stored);
    }
    ManyLanguages(const ManyLanguages&) = delete;
    ManyLanguages& operator=(const ManyLanguages&) = delete;
    ~ManyLanguages()
    {
        std::error_code ignored;
        fs::remove_all(m_folder, ignored);
    }
    /// Makes it the suite of the process.
    void Use()
    {
        setenv("TVL_SUITE_DIR", m_folder.c_str(), 1);
        setenv("TVL_USER_DIR", (m_folder / "user").c_str(), 1);
        PREFUTILS::IRegistry::SetForTests(&m_registry);
    }
    const std::vector<fs::path>& Files() const { return m_files; }

private:
    fs::path m_folder = fs::temp_directory_path() / ("tvl-bench-" + std::to_string(std::random_device()()));
    std::vector<fs::path> m_files;
    PREFUTILS::StoredRegistry m_registry{PREFUTILS::MakeMemoryStore()};
};

const ManyLanguages& SuiteOf(const benchmark::State& state)
{
    static std::map<std::int64_t, std::unique_ptr<ManyLanguages>> suites;
    auto& suite = suites[state.range(0)];
    if (!suite)
        suite = std::make_unique<ManyLanguages>(state.range(0));
    suite->Use();
    return *suite;
}

/// The whole selection of a process that has just started.
void Language_Select(benchmark::State& state)
{
    SuiteOf(state);
    for (auto _ : state) {
        GLB_UILanguage::ReleaseInstance(false);
        benchmark::DoNotOptimize(IGLB_UILanguage::GetInst().GetLanguage());
    }
}
BENCHMARK(Language_Select)->ArgName("languages")->Arg(25)->Arg(50)->Arg(100)->Arg(200)->Arg(400);

void Language_ReadTwice(benchmark::State& state)
{
    const ManyLanguages& suite = SuiteOf(state);
    for (auto _ : state)
        for (int pass = 0; pass < 2; ++pass)
            for (const fs::path& path : suite.Files()) {
                const auto object = nlohmann::json::parse(std::ifstream(path, std::ios::binary), nullptr, false);
                benchmark::DoNotOptimize(object.is_object());
            }
}
BENCHMARK(Language_ReadTwice)->ArgName("languages")->Arg(25)->Arg(50)->Arg(100)->Arg(200)->Arg(400);
}   // namespace
