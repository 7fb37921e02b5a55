// The system's files, for tests that listen to some operations or answer them.
#pragma once

#include "siblings/TvlUtils/FileLayer.h"

/// In the system's place as long as it lives. Hands on what a derived class does not answer; without the rights of others.
class PassingFiles : public TvlUtils::SystemIO::FileLayer {
public:
    using Path = std::filesystem::path;
    using FileHandle = TvlUtils::SystemIO::FileHandle;
    using FileResult = TvlUtils::SystemIO::FileResult;
    using FileStatus = TvlUtils::SystemIO::FileStatus;
    using FolderEntry = TvlUtils::SystemIO::FolderEntry;
    using OpenMode = TvlUtils::SystemIO::OpenMode;

    PassingFiles() : m_system(Get()) { SetForTests(this); }
    PassingFiles(const PassingFiles&) = delete;
    PassingFiles& operator=(const PassingFiles&) = delete;
    ~PassingFiles() override { SetForTests(nullptr); }

    FileResult Open(const Path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle) override
    {
        return m_system.Open(path, mode, handle);
    }
    FileResult Rename(const Path& from, const Path& to) override { return m_system.Rename(from, to); }
    FileResult Remove(const Path& path) override { return m_system.Remove(path); }
    FileResult List(const Path& folder, std::vector<FolderEntry>& entries) override
    {
        return m_system.List(folder, entries);
    }
    FileResult Stat(const Path& path, FileStatus& status) override { return m_system.Stat(path, status); }
    FileResult MakeFolder(const Path& path) override { return m_system.MakeFolder(path); }
    FileResult SetReadOnly(const Path& path, bool readOnly) override { return m_system.SetReadOnly(path, readOnly); }

private:
    FileLayer& m_system;
};
