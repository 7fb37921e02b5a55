// A folder of the user's files for one test.
#pragma once

#include "FakeEnvironment.h"
#include "ScratchFolder.h"

namespace TvlTestKit {

/// Stands for TVL_USER_DIR as long as it lives, and goes with all that is in it. The registry stays the process' own:
/// UserWorld brings one along.
class TemporaryUserFolder {
public:
    /// Makes the folder, empty.
    TemporaryUserFolder() : m_environment({{L"TVL_USER_DIR", m_folder.Path().wstring()}}) { }

    /// Writes a file of the folder.
    void Write(const char* name, const std::string& bytes) const { WriteFileBytes(m_folder.Path() / name, bytes); }
    /// Bytes of a file of the folder; empty when it can't be read.
    std::string Read(const char* name) const { return FileBytes(m_folder.Path() / name); }

private:
    ScratchFolder m_folder;
    FakeEnvironment m_environment;
};

}   // namespace TvlTestKit
