// The system's file layer, and the choice between it and others.
#include "siblings/TvlUtils/FileLayer.h"

#include "TvlUtils/FileStop.h"
#include "Windows/SystemFiles.h"
#include "windows/Environment.h"

#include <atomic>
#include <cstdlib>

namespace TvlUtils::SystemIO {

namespace fs = std::filesystem;

namespace {
class SystemLayer final : public FileLayer {
public:
    FileResult Open(const fs::path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle) override
    {
        return OpenSystemFile(path, mode, handle);
    }

    FileResult Rename(const fs::path& from, const fs::path& to) override { return RenameSystemFile(from, to); }

    FileResult Remove(const fs::path& path) override { return RemoveSystemFile(path); }

    FileResult List(const fs::path& folder, std::vector<FolderEntry>& entries) override
    {
        return ListSystemFolder(folder, entries);
    }

    FileResult Stat(const fs::path& name, FileStatus& status) override
    {
        // Not every system finds a folder whose name has a separator behind it.
        return name.has_filename() ? StatSystemFile(name, status) : StatSystemFile(name.parent_path(), status);
    }

    FileResult MakeFolder(const fs::path& path) override { return MakeSystemFolder(path); }

    FileResult SetReadOnly(const fs::path& path, bool readOnly) override
    {
        std::error_code failed;
        fs::permissions(path, readOnly ? kWriters : fs::perms::owner_write,
            readOnly ? fs::perm_options::remove : fs::perm_options::add, failed);
        return failed;
    }

    FileResult CreateLike(const fs::path& path, const fs::path& model, std::unique_ptr<FileHandle>& handle) override
    {
        return CreateSystemFileLike(path, model, handle);
    }

    FileResult MakePrivateFolder(const fs::path& path) override { return MakePrivateSystemFolder(path); }

private:
    static constexpr fs::perms kWriters = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
};

std::atomic<FileLayer*> replacement = nullptr;

FileLayer& SystemFileLayer()
{
    static SystemLayer system;
    static FileLayer& chosen = []() -> FileLayer& {
        const auto stopAt = Ports::Environment::Get().Variable(kFileStopVariable);
        const long long operation = stopAt ? std::wcstoll(stopAt->c_str(), nullptr, 10) : 0;
        if (operation < 1)
            return system;
        static StoppingFileLayer stopping(system, operation);
        return stopping;
    }();
    return chosen;
}
}   // namespace

FileLayer& FileLayer::Get()
{
    FileLayer* const replaced = replacement.load(std::memory_order_acquire);
    return replaced ? *replaced : SystemFileLayer();
}

void FileLayer::SetForTests(FileLayer* layer) { replacement.store(layer, std::memory_order_release); }

}   // namespace TvlUtils::SystemIO
