// Runs a fuzz target without a fuzzer.
//
//   fuzz_NAME FOLDER...                       the kept seeds of the folders
//   fuzz_NAME --mutations COUNT FOLDER...     inputs that are made from them, always the same ones: all of them with
//                                             TVL_FAULTS=whole in the environment, else the first fiftieth
//   fuzz_NAME --input NUMBER FOLDER...        one of these
#include "Mutator.h"

#include <algorithm>
#include <chrono>
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

std::vector<FuzzInput> ReadSeeds(char** folders, int count)
{
    std::vector<fs::path> files;
    for (int i = 0; i < count; ++i)
        for (const auto& entry : fs::directory_iterator(folders[i]))
            files.push_back(entry.path());
    std::sort(
        files.begin(), files.end(), [](const fs::path& a, const fs::path& b) { return a.filename() < b.filename(); });
    std::vector<FuzzInput> seeds;
    for (const fs::path& path : files) {
        std::ifstream file(path, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        seeds.emplace_back(bytes.begin(), bytes.end());
    }
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

/// Has a sanitizer name the input before it ends the process.
void NameInputOnReports()
{
#ifdef __SANITIZE_ADDRESS__
    __sanitizer_set_death_callback(
        [] { std::fprintf(stderr, "input %llu\n", static_cast<unsigned long long>(number)); });
#endif
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
}   // namespace

int main(int count, char** arguments)
{
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
