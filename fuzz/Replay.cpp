// Runs a fuzz target without a fuzzer.
//
//   fuzz_NAME FOLDER...                       the kept seeds of the folders
//   fuzz_NAME --mutations COUNT FOLDER...     inputs that are made from them, always the same ones: all of them with
//                                             TVL_FAULTS=whole in the environment, else the first fiftieth
//   fuzz_NAME --input NUMBER FOLDER...        one of these
//   fuzz_NAME --hostile PATH...               files, and those of folders and all below them: each may take a second and
//                                             256 MB
#include "InputCost.h"
#include "Mutator.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/common_interface_defs.h>
#endif

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {
namespace fs = std::filesystem;
constexpr auto kLongest = std::chrono::seconds(10);   // of one input, under sanitizers and beside other programs
constexpr std::uint64_t kPart = 50;                   // of a run that is not whole

constexpr long long kMostMilliseconds = 1000;   // of a hostile file
constexpr long long kMostBytes = 256LL << 20;   // of a hostile file

FuzzInput Read(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    return {bytes.begin(), bytes.end()};
}

std::vector<FuzzInput> ReadSeeds(char** folders, int count)
{
    std::vector<fs::path> files;
    for (int i = 0; i < count; ++i)
        for (const auto& entry : fs::directory_iterator(folders[i]))
            files.push_back(entry.path());
    std::sort(
        files.begin(), files.end(), [](const fs::path& a, const fs::path& b) { return a.filename() < b.filename(); });
    std::vector<FuzzInput> seeds;
    std::transform(files.begin(), files.end(), std::back_inserter(seeds), Read);
    return seeds;
}

/// False when it took too long.
bool Run(const FuzzInput& input)
{
    const auto start = std::chrono::steady_clock::now();
    LLVMFuzzerTestOneInput(input.data(), input.size());
    return std::chrono::steady_clock::now() - start < kLongest;
}

std::uint64_t number = 0;   // of the input that is being tried

void NameInput() { std::fprintf(stderr, "input %llu\n", static_cast<unsigned long long>(number)); }

/// Has the input named before a sanitizer or a target that found a fault ends the process.
void NameInputOnReports()
{
#ifdef __SANITIZE_ADDRESS__
    __sanitizer_set_death_callback(NameInput);
#endif
    std::signal(SIGABRT, [](int) { NameInput(); });   // the process ends behind it all the same
}

int RunMutations(std::vector<FuzzInput> seeds, std::uint64_t first, std::uint64_t end)
{
    NameInputOnReports();
    Mutator mutator(std::move(seeds));
    std::uint64_t slow = 0;
    for (number = first; number < end; ++number)
        if (!Run(mutator.Make(number))) {
            std::fprintf(stderr, "input %llu takes too long\n", static_cast<unsigned long long>(number));
            ++slow;
        }
    std::printf("%llu inputs tried, 0 reports, %llu of them too slow\n", static_cast<unsigned long long>(end - first),
        static_cast<unsigned long long>(slow));
    return slow == 0 ? 0 : 1;
}

int RunSeeds(const std::vector<FuzzInput>& seeds)
{
    const bool isFast = std::all_of(seeds.begin(), seeds.end(), Run);
    std::printf("%zu seeds replayed\n", seeds.size());
    return isFast ? 0 : 1;
}
/// The path, or the files of the folder and all below it.
std::vector<fs::path> FilesOf(const fs::path& path)
{
    if (!fs::is_directory(path))
        return {path};
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(path))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

int RunHostile(const std::vector<fs::path>& files)
{
    long long slowest = 0;
    long long largest = 0;
    int above = 0;
    for (const fs::path& path : files) {
        const FuzzInput input = Read(path);
        std::fprintf(stderr, "%s\r", path.filename().string().c_str());   // a report comes behind the file's name
        const InputCost cost;
        LLVMFuzzerTestOneInput(input.data(), input.size());
        const long long time = cost.Milliseconds();
        const long long bytes = cost.PeakBytes();
        if (time > kMostMilliseconds || bytes > kMostBytes) {
            std::printf("%s: %lld ms, %lld MB\n", path.string().c_str(), time, bytes >> 20);
            ++above;
        }
        slowest = std::max(slowest, time);
        largest = std::max(largest, bytes);
    }
    std::printf("%zu files, 0 reports, %d of them above a limit; at most %lld ms and %lld MB\n", files.size(), above,
        slowest, largest >> 20);
    return above == 0 && !files.empty() ? 0 : 1;
}
}   // namespace

int main(int count, char** arguments)
{
    if (count > 2 && std::strcmp(arguments[1], "--hostile") == 0) {
        std::vector<fs::path> files;
        for (int i = 2; i < count; ++i)
            for (const fs::path& path : FilesOf(arguments[i]))
                files.push_back(path);
        return RunHostile(files);
    }
    const bool isOne = count > 2 && std::strcmp(arguments[1], "--input") == 0;
    const bool isMany = count > 2 && std::strcmp(arguments[1], "--mutations") == 0;
    const int firstFolder = isOne || isMany ? 3 : 1;
    std::vector<FuzzInput> seeds = ReadSeeds(arguments + firstFolder, count - firstFolder);
    if (seeds.empty()) {
        std::puts("there are no seeds");
        return 1;
    }
    if (firstFolder == 1)
        return RunSeeds(seeds);
    const std::uint64_t wanted = std::strtoull(arguments[2], nullptr, 10);
    if (isOne)
        return RunMutations(std::move(seeds), wanted, wanted + 1);
    const char* const form = std::getenv("TVL_FAULTS");
    const bool isWhole = form && std::strcmp(form, "whole") == 0;
    return RunMutations(std::move(seeds), 0, isWhole ? wanted : std::max<std::uint64_t>(wanted / kPart, 1));
}
