#include "TvlTestKit/ScratchFolder.h"

#include <fstream>
#include <iterator>
#include <random>

namespace fs = std::filesystem;

namespace TvlTestKit {

ScratchFolder::ScratchFolder()
    : m_path(fs::temp_directory_path() / ("tvl-test-" + std::to_string(std::random_device()())))
{
    fs::create_directories(m_path);
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::string FileBytes(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFileBytes(const fs::path& path, const std::string& bytes)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

}   // namespace TvlTestKit
