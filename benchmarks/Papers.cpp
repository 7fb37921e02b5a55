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

/// A user's folder of the program's own, with preferences in memory. It lies in memory where the system offers that: both
/// sides flush twice for each save, and how long a disk's flush keeps the processor differs by more than what is compared.
class ScratchFolder {
public:
    ScratchFolder()
    {
        const std::filesystem::path memory = "/dev/shm";
        const auto parent = std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
        m_path = parent / ("bench-papers-" + std::to_string(getpid()));
        std::filesystem::create_directories(m_path);
        setenv("TVL_USER_DIR", m_path.c_str(), 1);
        CAppPrefManager::GetInstance().AttachStore(&m_store);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder()
    {
        CAppPrefManager::GetInstance().AttachStore(nullptr);
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

private:
    std::filesystem::path m_path;
    MemoryPrefStore m_store;
};

std::string UserFile()
{
    return TvlPlatform::ToUtf8(TvlUtils::SystemIO::Path::Combine(GetUserProfileConfigDir(), L"PaperTypes.xml"));
}

/// Fills the store with custom papers and saves it.
void Fill(std::int64_t count)
{
    static const ScratchFolder folder;
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

/// What a program that asks pugixml alone keeps of a paper.
struct PeerPaper {
    int id;
    int customId;
    std::wstring name;
    double width;
    double height;
    std::wstring units;
    bool fixedOrientation;
    int dpi;
    bool hidden;
};

/// Reads papers through pugixml's interface of nodes and attributes.
struct NodeReader {
    PeerPaper operator()(const pugi::xml_node& size) const
    {
        return {size.attribute("id").as_int(-1), size.attribute("customid").as_int(),
            pugi::as_wide(size.attribute("name").as_string()), size.attribute("width").as_double(),
            size.attribute("height").as_double(), pugi::as_wide(size.attribute("units").as_string("in")),
            size.attribute("fixedorientation").as_bool(), size.attribute("dpi").as_int(96),
            size.attribute("hidden").as_bool()};
    }
};

/// Reads papers by expressions, which are compiled once.
struct ExpressionReader {
    PeerPaper operator()(const pugi::xml_node& size) const
    {
        return {static_cast<int>(id.evaluate_number(size)), static_cast<int>(customId.evaluate_number(size)),
            pugi::as_wide(name.evaluate_string(size)), width.evaluate_number(size), height.evaluate_number(size),
            pugi::as_wide(units.evaluate_string(size)), fixedOrientation.evaluate_boolean(size),
            static_cast<int>(dpi.evaluate_number(size)), hidden.evaluate_boolean(size)};
    }
    pugi::xpath_query id{"number(concat('0', @id))"};
    pugi::xpath_query customId{"number(concat('0', @customid))"};
    pugi::xpath_query name{"string(@name)"};
    pugi::xpath_query width{"number(@width)"};
    pugi::xpath_query height{"number(@height)"};
    pugi::xpath_query units{"string(@units)"};
    pugi::xpath_query fixedOrientation{"@fixedorientation = 'true'"};
    pugi::xpath_query dpi{"number(concat('0', @dpi))"};
    pugi::xpath_query hidden{"@hidden = 'true'"};
};

template <class Reader>
void LoadWithPugixml(benchmark::State& state)
{
    Fill(state.range(0));
    const std::string file = UserFile();
    const Reader read;
    for (auto _ : state) {
        pugi::xml_document document;
        document.load_file(file.c_str());
        std::vector<PeerPaper> papers;
        for (const char* path : {"/PageSizes/sizes/*", "/PageSizes/CustomPageSizes/*"})
            for (const pugi::xpath_node& size : document.select_nodes(path))
                papers.push_back(read(size.node()));
        std::vector<int> indices;
        for (const char* path : {"/PageSizes/locales/*", "/PageSizes/pageset[@system='imperial']/order/*",
                 "/PageSizes/pageset[@system='imperial']/mru/*"})
            for (const pugi::xpath_node& node : document.select_nodes(path))
                indices.push_back(node.node().text().as_int());
        benchmark::DoNotOptimize(papers);
        benchmark::DoNotOptimize(indices);
    }
}

/// Load and walk by expressions alone.
void PaperLoad_Pugixml(benchmark::State& state) { LoadWithPugixml<ExpressionReader>(state); }

/// The same with attributes read from the nodes: without texts by language, identifiers and lists, a floor for the store.
void PaperLoad_PugixmlNodes(benchmark::State& state) { LoadWithPugixml<NodeReader>(state); }

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

/// Sets the values of a list's papers anew, as the store does.
void SetPeerPapers(const pugi::xml_node& list)
{
    for (const pugi::xml_node& size : list.children())
        for (pugi::xml_attribute attribute : size.attributes()) {
            const std::string_view name = attribute.name();
            if (name == "width" || name == "height")
                attribute.set_value(attribute.as_double());
            else if (name == "fixedorientation" || name == "hidden")
                attribute.set_value(attribute.as_bool());
            else if (name == "name" || name == "units")
                attribute.set_value(pugi::as_utf8(pugi::as_wide(attribute.as_string())).c_str());
            else
                attribute.set_value(attribute.as_int());
        }
}

void Flush(const std::string& path)
{
    const int descriptor = open(path.c_str(), O_RDONLY);
    fsync(descriptor);
    close(descriptor);
}

/// The papers set anew, the document written to another file, which is flushed and put in place for good.
void PaperSave_Pugixml(benchmark::State& state)
{
    Fill(state.range(0));
    const std::string file = UserFile();
    const std::string aside = file + ".peer";
    pugi::xml_document document;
    document.load_file(file.c_str());
    for (auto _ : state) {
        for (const char* list : {"sizes", "CustomPageSizes"})
            SetPeerPapers(document.child("PageSizes").child(list));
        document.save_file(aside.c_str());
        Flush(aside);
        std::filesystem::rename(aside, file);
        Flush(std::filesystem::path(file).parent_path());
    }
}

/// Without papers of the user's own there are those of the master file.
void CustomPapers(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("papers")->Arg(0)->Arg(60)->Arg(250)->Arg(1'000)->Arg(4'000);
}

BENCHMARK(PaperLoad_Own)->Apply(CustomPapers);
BENCHMARK(PaperLoad_Pugixml)->Apply(CustomPapers);
BENCHMARK(PaperLoad_PugixmlNodes)->Apply(CustomPapers);
BENCHMARK(PaperSave_Own)->Apply(CustomPapers);
BENCHMARK(PaperSave_Pugixml)->Apply(CustomPapers);

}   // namespace
