#include "ChildProcess.h"

#include "StartChild.h"
#include "siblings/TvlUtils/FilePath.h"
#include "windows/Modules.h"

#include <fstream>

namespace fs = std::filesystem;

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
