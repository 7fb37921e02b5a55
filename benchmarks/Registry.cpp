// Reading the registry by its profile calls beside the bare statements on the same file, kept ready.
#include "WUTLRegistry.h"
#include "siblings/TvlPref/IRegistry.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sqlite3.h>
#include <string>

namespace {

constexpr const wchar_t* kBase = L"HKEY_CURRENT_USER\\Software\\Bench\\";
constexpr int kPlaces = 260;

/// The key with so many values.
std::wstring Section(std::int64_t values) { return L"Section" + std::to_wstring(values); }

/// A registry of the program's own; the path of its file.
const std::string& RegistryFile()
{
    static const std::string file = [] {
        std::string path = (std::filesystem::temp_directory_path() / "bench-registry.db").string();
        std::filesystem::remove(path);
        setenv("TVL_REGISTRY", path.c_str(), 1);
        return path;
    }();
    return file;
}

/// Makes the key with so many values, two of which are read.
std::wstring FilledSection(std::int64_t values)
{
    RegistryFile();
    static std::set<std::int64_t> filled;
    const std::wstring section = Section(values);
    if (!filled.insert(values).second)
        return section;
    PREFUTILS::RegistryBatch batch;
    WUTLRegistry::RegWriteString(section.c_str(), L"Text", L"C:\\some folder\\with a file.xml", kBase);
    WUTLRegistry::RegReadInt(section.c_str(), L"Number", 42, kBase);
    for (std::int64_t i = 2; i < values; ++i)
        WUTLRegistry::RegWriteString(section.c_str(), (L"Other" + std::to_wstring(i)).c_str(), L"another text", kBase);
    batch.Commit();
    return section;
}

void RegistryText_Own(benchmark::State& state)
{
    const std::wstring section = FilledSection(state.range(0));
    wchar_t buffer[kPlaces + 1];
    for (auto _ : state)
        benchmark::DoNotOptimize(
            WUTLRegistry::RegReadString(section.c_str(), L"Text", nullptr, buffer, kPlaces, kBase));
}

void RegistryNumber_Own(benchmark::State& state)
{
    const std::wstring section = FilledSection(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(WUTLRegistry::RegReadInt(section.c_str(), L"Number", 0, kBase));
}

/// Finds the key and reads the value, each statement in a read of its own as any process must that shares the file.
void ReadBare(benchmark::State& state, const char* name)
{
    FilledSection(state.range(0));
    sqlite3* database = nullptr;
    sqlite3_open(RegistryFile().c_str(), &database);
    sqlite3_stmt* findKey = nullptr;
    sqlite3_stmt* readValue = nullptr;
    sqlite3_prepare_v2(database, "SELECT id FROM keys WHERE path = ?1", -1, &findKey, nullptr);
    sqlite3_prepare_v2(
        database, "SELECT type, data FROM entries WHERE key = ?1 AND folded = ?2", -1, &readValue, nullptr);
    std::string path;
    sqlite3_stmt* anyKey = nullptr;
    const std::string pattern = "%section" + std::to_string(state.range(0));
    sqlite3_prepare_v2(database, "SELECT path FROM keys WHERE path LIKE ?1", -1, &anyKey, nullptr);
    sqlite3_bind_text(anyKey, 1, pattern.c_str(), -1, nullptr);
    if (sqlite3_step(anyKey) == SQLITE_ROW)
        path = reinterpret_cast<const char*>(sqlite3_column_text(anyKey, 0));
    sqlite3_finalize(anyKey);
    int bytes = 0;
    for (auto _ : state) {
        sqlite3_bind_text(findKey, 1, path.data(), static_cast<int>(path.size()), nullptr);
        sqlite3_step(findKey);
        const sqlite3_int64 key = sqlite3_column_int64(findKey, 0);
        sqlite3_reset(findKey);
        sqlite3_bind_int64(readValue, 1, key);
        sqlite3_bind_text(readValue, 2, name, -1, nullptr);
        if (sqlite3_step(readValue) == SQLITE_ROW)
            bytes = sqlite3_column_bytes(readValue, 1);
        sqlite3_reset(readValue);
    }
    if (bytes == 0)
        state.SkipWithError("the value was not found");
    sqlite3_finalize(findKey);
    sqlite3_finalize(readValue);
    sqlite3_close(database);
}

void RegistryText_Sqlite(benchmark::State& state) { ReadBare(state, "text"); }
void RegistryNumber_Sqlite(benchmark::State& state) { ReadBare(state, "number"); }

BENCHMARK(RegistryText_Own)->ArgName("values")->RangeMultiplier(10)->Range(10, 10'000);
BENCHMARK(RegistryText_Sqlite)->ArgName("values")->RangeMultiplier(10)->Range(10, 10'000);
BENCHMARK(RegistryNumber_Own)->ArgName("values")->RangeMultiplier(10)->Range(10, 10'000);
BENCHMARK(RegistryNumber_Sqlite)->ArgName("values")->RangeMultiplier(10)->Range(10, 10'000);

}   // namespace
