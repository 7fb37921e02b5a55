// A file layer in memory, where each operation can fail, stop halfway or be the last one before a crash.
#pragma once

#include "FaultWalk.h"
#include "siblings/TvlUtils/FileLayer.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// Stands in for the system's layer while it lives. What a folder holds is flushed when a file is renamed in it or a folder
/// made in it, as the layer promises, and at no other moment: behind a power cut a file made since then is gone, one removed
/// or moved away is back. Names at the top are always flushed. What tests put into it and ask of it directly is not counted.
/// Operations are numbered from 1. For one thread.
class MemoryFiles final : public TvlUtils::SystemIO::FileLayer {
public:
    using FileResult = TvlUtils::SystemIO::FileResult;
    using Path = std::filesystem::path;

    /// What happens in an operation.
    enum class Fault {
        Fail,          ///< fails with io_error and does nothing
        FailOnward,    ///< so do all behind it
        ShortWrite,    ///< the next write of more than one byte does half of its work and succeeds
        StopDropped,   ///< the process ends; of what was not flushed nothing is left
        StopTorn,      ///< the process ends; of what was not flushed a part is left
        StopUnnamed,   ///< the process ends; of what was not flushed nothing is left, names in folders neither
        StopKept,      ///< the process ends; what it has written is left
    };
    static constexpr Fault kFaults[] = {Fault::Fail, Fault::FailOnward, Fault::ShortWrite, Fault::StopDropped,
        Fault::StopTorn, Fault::StopUnnamed, Fault::StopKept};
    /// Whether the whole system goes down, not the process alone.
    static constexpr bool EndsSystem(Fault fault)
    {
        return fault == Fault::StopDropped || fault == Fault::StopTorn || fault == Fault::StopUnnamed;
    }

    /// Thrown where the process ends. No exception that anybody handles; until Restart nothing has an effect any more.
    struct Stop { };

    MemoryFiles();
    MemoryFiles(const MemoryFiles&) = delete;
    MemoryFiles& operator=(const MemoryFiles&) = delete;
    ~MemoryFiles() override;

    /// Lets the n-th operation from now on meet a fault. One that only writes can meet waits for the next of them.
    /// Folders have been flushed with the names that they have now.
    void Inject(std::size_t operation, Fault fault);
    /// Bytes that all files together may have; writes beyond it do what fits and fail then with no_space_on_device.
    void SetCapacity(std::size_t bytes) { m_capacity = bytes; }
    /// Whether the fault has happened, or the capacity did not suffice.
    bool FaultReached() const { return m_reached; }
    /// The operation that a fault has happened in first, counted as Inject counts; 0 without any.
    std::size_t FaultPoint() const { return m_metAt - std::min(m_metAt, m_injectedAt); }
    /// Ends the process now, unless it ended before or the fault is no end of it: what an operation has reported as done
    /// must outlast that.
    void EndProcess();
    /// Begins anew on what a crash has left, or what is there, without faults and limits.
    void Restart();

    /// Adds a folder and those above it.
    void AddFolder(const Path& path);
    /// Adds a file that is flushed, and its folders.
    void Put(const Path& path, const std::string& bytes);
    std::optional<std::string> Get(const Path& path) const;
    /// Files there are, folders left out.
    std::size_t CountFiles() const;
    /// Names of all files, folders left out, each followed by a line feed.
    std::string ListFiles() const;
    std::size_t UsedBytes() const;
    /// What changes from now on changes so much later.
    void PassTime(std::chrono::seconds time) { m_now += time; }

    FileResult Open(const Path& path, TvlUtils::SystemIO::OpenMode mode,
        std::unique_ptr<TvlUtils::SystemIO::FileHandle>& handle) override;
    FileResult Rename(const Path& from, const Path& to) override;
    FileResult Remove(const Path& path) override;
    FileResult List(const Path& folder, std::vector<TvlUtils::SystemIO::FolderEntry>& entries) override;
    FileResult Stat(const Path& path, TvlUtils::SystemIO::FileStatus& status) override;
    FileResult MakeFolder(const Path& path) override;
    FileResult SetReadOnly(const Path& path, bool readOnly) override;

private:
    friend class MemoryFile;

    struct Node {
        TvlUtils::SystemIO::FileKind kind = TvlUtils::SystemIO::FileKind::File;
        std::string bytes;     // as programs see them
        std::string flushed;   // as a power cut leaves them
        bool isReadOnly = false;
        std::filesystem::file_time_type modified;
        std::map<Path, std::shared_ptr<Node>> flushedNames = {};   // of a folder, as a power cut leaves them
    };
    using Nodes = std::map<Path, std::shared_ptr<Node>>;

    /// Counts an operation and lets it meet its fault; a failure ends the operation.
    FileResult Begin();
    /// Notes that a fault happens in the operation that is on.
    void Reach();
    /// Leaves of the files what the fault says that is left when the process ends.
    void LoseUnflushed();
    /// Leaves the names that the folders were flushed with.
    void LoseUnflushedNames();
    /// Makes what a folder holds outlast a power cut.
    void FlushFolder(const Path& folder);
    /// As much of a write as there is room for.
    FileResult Write(Node& file, std::size_t offset, std::string_view bytes, std::size_t& done);
    std::shared_ptr<Node> Find(const Path& path) const;
    bool HasFolderOf(const Path& path) const;
    bool HoldsAnything(const Path& folder) const;

    Nodes m_nodes;
    std::size_t m_operations = 0;
    std::size_t m_injectedAt = 0;   // operations before the fault was asked for
    std::size_t m_faultAt = 0;      // 0 for none
    std::size_t m_metAt = 0;        // 0 as long as it has not happened
    Fault m_fault = Fault::Fail;
    std::optional<std::size_t> m_capacity;
    bool m_reached = false;
    bool m_stopped = false;
    std::filesystem::file_time_type m_now;   // one second later with every change
};

/// Runs `operation` over a file layer that `prepare(files)` has filled and `inject(files)` has spoilt, to its end or that
/// of the process, which comes right behind it at the latest when the fault is one that ends it; then
/// `check(files)` on what a process finds that starts afterwards. Returns whether the fault happened.
template <class Prepare, class Inject, class Operation, class Check>
bool RunOnFaultyFiles(Prepare prepare, Inject inject, Operation operation, Check check)
{
    MemoryFiles files;
    prepare(files);
    inject(files);
    try {
        operation();
    } catch (const MemoryFiles::Stop&) {
        // The process ended.
    }
    const bool reached = files.FaultReached();
    files.EndProcess();
    files.Restart();
    check(files);
    return reached;
}

/// Lets each kind of fault happen in each file operation of `operation`; see RunOnFaultyFiles.
/// @param recorded file operations that `operation` is known to do; how many of them can be cut short is not asked for
template <class Prepare, class Operation, class Check>
void WalkFileFaults(std::size_t recorded, Prepare prepare, Operation operation, Check check)
{
    for (const MemoryFiles::Fault fault : MemoryFiles::kFaults) {
        SCOPED_TRACE(testing::Message() << "fault " << static_cast<int>(fault));
        WalkFaultPoints(fault == MemoryFiles::Fault::ShortWrite ? 0 : recorded, [&](std::size_t point) {
            return RunOnFaultyFiles(
                prepare, [&](MemoryFiles& files) { files.Inject(point, fault); }, operation, check);
        });
    }
}

/// Lets the disk be full at each byte that `operation` writes; see RunOnFaultyFiles.
/// @param recorded bytes by which the files are known to grow on the way
template <class Prepare, class Operation, class Check>
void WalkFullDisk(std::size_t recorded, Prepare prepare, Operation operation, Check check)
{
    WalkFaultPoints(recorded, [&](std::size_t point) {
        return RunOnFaultyFiles(
            prepare, [&](MemoryFiles& files) { files.SetCapacity(files.UsedBytes() + point - 1); }, operation, check);
    });
}
