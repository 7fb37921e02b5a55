// A user of a test's own: folders, registry and environment that end with the object.
#pragma once

#include "FakeEnvironment.h"
#include "MemoryRegistry.h"
#include "ScratchFolder.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Surroundings for tests of applications: folders, registry, locale and windows that are no real ones. docs/test-kit.md
/// has an example.
namespace TvlTestKit {

/// TVL_USER_DIR is the folder "user" of the world's own folder, and the registry is empty and in memory: nothing of the
/// machine's user is read or written. Names of files and folders count from the world's folder.
class UserWorld {
public:
    /// Makes the folder and puts the registry in place.
    UserWorld();

    /// A path in the world's folder. Slashes become the system's separators.
    TvlString Path(const std::string& name) const;
    /// The same with a separator at its end.
    TvlString Folder(const std::string& name) const;
    /// Makes a folder. Returns its path with a separator at its end.
    TvlString MakeFolder(const std::string& name) const;
    /// Writes a file, and makes the folders on its way. Returns its path.
    TvlString MakeFile(const std::string& name, const std::string& bytes = "content") const;
    /// Bytes of a file; empty when it can't be read.
    std::string Bytes(const std::string& name) const;
    /// Whether there is such a file or folder.
    bool Has(const std::string& name) const;
    /// Takes a file, or a folder with all that is in it.
    void Remove(const std::string& name) const;

private:
    ScratchFolder m_folder;

public:
    FakeEnvironment environment;   ///< further variables can be set in it
    MemoryRegistry registry;       ///< what IRegistry::Get() gives
};

}   // namespace TvlTestKit
