// The store of papers beside pugixml's own load, walk and save of the same file.
#include "PaperTypes.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/PrefManager.h"
#include "siblings/TvlPref/PrefStore.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Environment.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <pugixml.hpp>
#include <unistd.h>

namespace {

/// A user's folder of the program's own, with preferences in memory.
void UseScratchFolder()
{
    static MemoryPrefStore store;
    static const bool isReady = [] {
        const auto folder = std::filesystem::temp_directory_path() / "bench-papers";
        std::filesystem::create_directories(folder);
        setenv("TVL_USER_DIR", folder.c_str(), 1);
        CAppPrefManager::GetInstance().AttachStore(&store);
        return true;
    }();
    benchmark::DoNotOptimize(isReady);
}

std::string UserFile()
{
    return TvlPlatform::ToUtf8(TvlUtils::SystemIO::Path::Combine(GetUserProfileConfigDir(), L"PaperTypes.xml"));
}

/// Fills the store with custom papers and saves it.
void Fill(std::int64_t count)
{
    UseScratchFolder();
    CPaperTypeMgr::ReleaseInstance(false);
    std::filesystem::remove(UserFile());
    CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
    for (std::int64_t i = 0; i < count; ++i) {
        PaperTypeInformation paper = CPaperTypeMgr::SetCustomPaper(100.0 + static_cast<double>(i), 200.0, 2);
        paper.DisplayName = L"paper " + std::to_wstring(i);
        papers.AddCustomPaper(paper, false);
    }
    CPaperTypeMgr::Shutdown();
    CPaperTypeMgr::ReleaseInstance(false);
}

void PaperLoad_Own(benchmark::State& state)
{
    Fill(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(CPaperTypeMgr::GetInstance().GetCount());
        CPaperTypeMgr::ReleaseInstance(false);
    }
}

void PaperLoad_Pugixml(benchmark::State& state)
{
    Fill(state.range(0));
    const std::string file = UserFile();
    for (auto _ : state) {
        pugi::xml_document document;
        document.load_file(file.c_str());
        double sum = 0.0;
        for (const char* path : {"/PageSizes/sizes/*", "/PageSizes/CustomPageSizes/*"})
            for (const pugi::xpath_node& size : document.select_nodes(path))
                for (const char* name :
                    {"id", "customid", "name", "width", "height", "units", "fixedorientation", "dpi", "hidden"})
                    sum += size.node().attribute(name).as_double();
        for (const char* path : {"/PageSizes/locales/*", "/PageSizes/pageset[@system='imperial']/order/*",
                 "/PageSizes/pageset[@system='imperial']/mru/*"})
            for (const pugi::xpath_node& node : document.select_nodes(path))
                sum += node.node().text().as_int();
        benchmark::DoNotOptimize(sum);
    }
}

void PaperSave_Own(benchmark::State& state)
{
    Fill(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        CPaperTypeMgr::ReleaseInstance(false);
        CPaperTypeMgr::GetInstance();
        state.ResumeTiming();
        CPaperTypeMgr::Shutdown();
    }
}

/// The same attributes set anew, the document written to another file, which is flushed and put in place.
void PaperSave_Pugixml(benchmark::State& state)
{
    Fill(state.range(0));
    const std::string file = UserFile();
    const std::string aside = file + ".peer";
    pugi::xml_document document;
    document.load_file(file.c_str());
    for (auto _ : state) {
        document.save_file(aside.c_str());
        const int descriptor = open(aside.c_str(), O_RDONLY);
        fsync(descriptor);
        close(descriptor);
        std::filesystem::rename(aside, file);
    }
}

BENCHMARK(PaperLoad_Own)->Arg(0)->Arg(1000);
BENCHMARK(PaperLoad_Pugixml)->Arg(0)->Arg(1000);
BENCHMARK(PaperSave_Own)->Arg(0)->Arg(1000);
BENCHMARK(PaperSave_Pugixml)->Arg(0)->Arg(1000);

}   // namespace
