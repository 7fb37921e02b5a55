#include "ChildProcess.h"

#include "StartChild.h"
#include "siblings/TvlUtils/FilePath.h"
#include "windows/Modules.h"

#include <fstream>
#include <iterator>
#include <random>

namespace fs = std::filesystem;

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

ChildResult RunProgram(const ChildProcess& child)
{
    const ScratchFolder folder;
    const ChildStreams streams{folder.Path() / "in", folder.Path() / "out", folder.Path() / "err"};
    std::ofstream(streams.input, std::ios::binary) << child.input;
    const fs::path self = TvlUtils::SystemIO::ToFilePath(Ports::Modules::Get().ProgramPath());
    fs::path program = self.parent_path() / child.program;
    program += self.extension();
    const int exitCode = StartChild(program, child, streams);
    return {exitCode, FileBytes(streams.output), FileBytes(streams.errors)};
}
