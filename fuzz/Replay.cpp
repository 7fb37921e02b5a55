// Runs a fuzz target over the files of a folder: the kept seeds as a test, without a fuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** arguments)
{
    int files = 0;
    for (int i = 1; i < count; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(arguments[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
            std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
            LLVMFuzzerTestOneInput(input.data(), input.size());
            ++files;
        }
    }
    std::printf("%d seeds replayed\n", files);
    return files > 0 ? 0 : 1;
}
