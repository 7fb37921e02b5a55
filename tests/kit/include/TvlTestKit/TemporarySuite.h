// An installed suite's folder that a test may change.
#pragma once

#include "FakeEnvironment.h"
#include "ScratchFolder.h"

namespace TvlTestKit {

/// Stands for TVL_SUITE_DIR as long as it lives. The texts of the user interface are English then, and read anew when they
/// are next asked for; so they are when it goes, from the installed suite.
class TemporarySuite {
public:
    /// What the folder holds at first.
    enum class Content {
        Copy,     ///< a copy of the suite that is installed
        Nothing   ///< no file at all: without texts and master files
    };

    /// Throws std::filesystem::filesystem_error when the installed suite can't be copied.
    explicit TemporarySuite(Content content = Content::Copy);
    ~TemporarySuite();
    TemporarySuite(const TemporarySuite&) = delete;
    TemporarySuite& operator=(const TemporarySuite&) = delete;

    /// The folder's full path.
    const std::filesystem::path& Path() const { return m_folder.Path(); }
    /// Writes a file of the folder, such as "Languages/EN/Data/Texts/own.json".
    void Write(const std::string& name, const std::string& bytes) const;

private:
    ScratchFolder m_folder;
    FakeEnvironment m_environment;
};

}   // namespace TvlTestKit
