// The suite, the user and the system of one run, all in memory and made anew: what a fault breaks is seen in the files,
// and lasts no longer than the run.
#pragma once

#include "FakeWindowing.h"
#include "MemoryFiles.h"
#include "MemoryRegistry.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <map>
#include <optional>
#include <string>

/// What the user's files lie in: a folder that no disk has. TVL_SUITE_DIR of the program is the installed suite, whose
/// texts are read past the file layer.
inline constexpr const char* kFaultFolder = "/fault-world";

class FaultWorld {
public:
    FaultWorld();

    /// A path of the world; it begins with "user/" or "suite/".
    static std::filesystem::path File(const std::string& name);
    static TvlString Path(const std::string& name);
    void Put(const std::string& name, const std::string& bytes) { files.Put(File(name), bytes); }
    std::optional<std::string> Get(const std::string& name) const { return files.Get(File(name)); }

    MemoryFiles files;
    MemoryRegistry registry;
    FakeWindowing windowing;
};

/// Sets the program's environment variables and keeps its log quiet. Once, before the first world.
void EnterFaultWorld();
