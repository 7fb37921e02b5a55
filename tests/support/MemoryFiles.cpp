#include "MemoryFiles.h"

#include <algorithm>
#include <cstring>

using namespace TvlUtils::SystemIO;

/// An open file. It keeps its node when the name goes elsewhere.
class MemoryFile final : public FileHandle {
public:
    MemoryFile(MemoryFiles& files, std::shared_ptr<MemoryFiles::Node> node, OpenMode mode)
        : m_files(files), m_node(std::move(node)), m_mode(mode)
    {
    }

    FileResult ReadAt(long long offset, void* bytes, std::size_t size, std::size_t& done) override
    {
        done = 0;
        if (const FileResult result = m_files.Begin(); !result)
            return result;
        const auto at = static_cast<std::size_t>(offset);
        if (at < m_node->bytes.size())
            done = m_node->bytes.copy(static_cast<char*>(bytes), size, at);
        return {};
    }

    FileResult WriteAt(long long offset, const void* bytes, std::size_t size, std::size_t& done) override
    {
        done = 0;
        if (m_mode == OpenMode::Read)
            return std::errc::permission_denied;
        const std::size_t at = m_mode == OpenMode::Append ? m_node->bytes.size() : static_cast<std::size_t>(offset);
        return m_files.Write(*m_node, at, {static_cast<const char*>(bytes), size}, done);
    }

    FileResult Flush() override
    {
        const FileResult result = m_files.Begin();
        if (result)
            m_node->flushed = m_node->bytes;
        return result;
    }

    FileResult Close() override { return m_files.Begin(); }

private:
    MemoryFiles& m_files;
    std::shared_ptr<MemoryFiles::Node> m_node;
    OpenMode m_mode;
};

namespace {
/// The one form that a path is kept in: worked out, and without a separator at its end.
std::filesystem::path Normal(const std::filesystem::path& path)
{
    const std::filesystem::path normal = path.lexically_normal();
    return normal.has_filename() ? normal : normal.parent_path();
}

/// Whether a path lies in no folder that is kept.
bool IsAtTop(const std::filesystem::path& path)
{
    const std::filesystem::path folder = path.parent_path();
    return folder.empty() || folder == folder.root_path();
}
}   // namespace

MemoryFiles::MemoryFiles() { FileLayer::SetForTests(this); }

MemoryFiles::~MemoryFiles() { FileLayer::SetForTests(nullptr); }

void MemoryFiles::Inject(std::size_t operation, Fault fault)
{
    m_injectedAt = m_operations;
    m_faultAt = m_operations + operation;
    m_fault = fault;
    m_metAt = 0;
    m_reached = false;
    for (const auto& [path, node] : m_nodes)
        FlushFolder(path);
}

void MemoryFiles::Restart()
{
    m_faultAt = 0;
    m_capacity.reset();
    m_metAt = 0;
    m_reached = m_stopped = false;
}

void MemoryFiles::Reach()
{
    m_metAt = m_reached ? m_metAt : m_operations;
    m_reached = true;
}

FileResult MemoryFiles::Begin()
{
    if (m_stopped)
        return std::errc::io_error;   // whoever cleans up on the way out of a process that has ended
    ++m_operations;
    const bool isPast = m_reached && m_fault == Fault::FailOnward;
    // Nothing but a write can be cut short, and tells so itself.
    if ((m_operations != m_faultAt && !isPast) || m_fault == Fault::ShortWrite)
        return {};
    Reach();
    if (m_fault == Fault::Fail || m_fault == Fault::FailOnward)
        return std::errc::io_error;
    EndProcess();
    throw Stop();
}

void MemoryFiles::EndProcess()
{
    if (m_stopped || m_fault <= Fault::ShortWrite)
        return;
    m_stopped = true;
    LoseUnflushed();
}

void MemoryFiles::LoseUnflushedNames()
{
    Nodes kept;
    const auto keep = [&](const auto& self, const Path& path, const std::shared_ptr<Node>& node) -> void {
        kept.emplace(path, node);
        for (const auto& [name, held] : node->flushedNames)
            self(self, path / name, held);
    };
    for (const auto& [path, node] : m_nodes)
        if (IsAtTop(path))
            keep(keep, path, node);
    m_nodes = std::move(kept);
}

void MemoryFiles::FlushFolder(const Path& folder)
{
    const auto node = Find(folder);
    if (!node)
        return;
    node->flushedNames.clear();
    for (const auto& [path, held] : m_nodes)
        if (path.parent_path() == Normal(folder))
            node->flushedNames.emplace(path.filename(), held);
}

void MemoryFiles::LoseUnflushed()
{
    if (m_fault == Fault::StopUnnamed)
        LoseUnflushedNames();
    for (auto& [path, node] : m_nodes) {
        std::string& bytes = node->bytes;
        if (m_fault == Fault::StopDropped || m_fault == Fault::StopUnnamed)
            bytes = node->flushed;
        // The first half has reached the disk, the second has not; the length may have been noted before the bytes.
        if (m_fault == Fault::StopTorn && bytes != node->flushed)
            for (std::size_t i = bytes.size() / 2; i < bytes.size(); ++i)
                bytes[i] = i < node->flushed.size() ? node->flushed[i] : '\0';
        node->flushed = bytes;
    }
}

FileResult MemoryFiles::Write(Node& file, std::size_t offset, std::string_view bytes, std::size_t& done)
{
    const bool stops = !m_stopped && m_operations + 1 == m_faultAt && m_fault > Fault::ShortWrite;
    if (!stops)
        if (const FileResult result = Begin(); !result)
            return result;
    const bool isCut =
        m_fault == Fault::ShortWrite && !m_reached && m_faultAt > 0 && m_operations >= m_faultAt && bytes.size() > 1;
    if (isCut)
        Reach();
    if (isCut || (stops && bytes.size() > 1))
        bytes = bytes.substr(0, bytes.size() / 2);

    const std::size_t growth = std::max(offset + bytes.size(), file.bytes.size()) - file.bytes.size();
    const std::size_t used = UsedBytes();
    if (m_capacity && used + growth > *m_capacity) {
        Reach();
        const std::size_t lacking = used + growth - *m_capacity;
        if (lacking >= bytes.size())
            return std::errc::no_space_on_device;
        bytes.remove_suffix(lacking);
    }
    done = bytes.size();
    if (file.bytes.size() < offset + done)
        file.bytes.resize(offset + done);
    std::copy(bytes.begin(), bytes.end(), file.bytes.begin() + static_cast<std::ptrdiff_t>(offset));
    file.modified = m_now += std::chrono::seconds(1);
    return stops ? Begin() : FileResult();
}

std::shared_ptr<MemoryFiles::Node> MemoryFiles::Find(const Path& path) const
{
    const auto found = m_nodes.find(Normal(path));
    return found == m_nodes.end() ? nullptr : found->second;
}

bool MemoryFiles::HasFolderOf(const Path& path) const
{
    const Path at = Normal(path);
    const auto found = Find(at.parent_path());
    return IsAtTop(at) || (found && found->kind == FileKind::Folder);
}

bool MemoryFiles::HoldsAnything(const Path& folder) const
{
    return std::any_of(m_nodes.begin(), m_nodes.end(),
        [at = Normal(folder)](const auto& node) { return node.first.parent_path() == at; });
}

void MemoryFiles::AddFolder(const Path& path)
{
    for (Path at = Normal(path); !at.empty() && at != at.root_path(); at = at.parent_path()) {
        m_nodes.emplace(at, std::make_shared<Node>(Node{FileKind::Folder, {}, {}, false, m_now}));
        FlushFolder(at);
    }
}

void MemoryFiles::Put(const Path& path, const std::string& bytes)
{
    AddFolder(path.parent_path());
    m_nodes[Normal(path)] = std::make_shared<Node>(Node{FileKind::File, bytes, bytes, false, m_now});
    FlushFolder(Normal(path).parent_path());
}

std::optional<std::string> MemoryFiles::Get(const Path& path) const
{
    const auto node = Find(path);
    return node && node->kind == FileKind::File ? std::optional(node->bytes) : std::nullopt;
}

std::size_t MemoryFiles::CountFiles() const
{
    return static_cast<std::size_t>(std::count_if(
        m_nodes.begin(), m_nodes.end(), [](const auto& node) { return node.second->kind == FileKind::File; }));
}

std::string MemoryFiles::ListFiles() const
{
    std::string names;
    for (const auto& [path, node] : m_nodes)
        if (node->kind == FileKind::File)
            names += path.filename().string() + "\n";
    return names;
}

std::size_t MemoryFiles::UsedBytes() const
{
    std::size_t bytes = 0;
    for (const auto& [path, node] : m_nodes)
        bytes += node->bytes.size();
    return bytes;
}

FileResult MemoryFiles::Open(const Path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle)
{
    if (const FileResult result = Begin(); !result)
        return result;
    auto node = Find(path);
    const bool isNew = mode == OpenMode::CreateNew || (mode == OpenMode::Append && !node);
    if (isNew && node)
        return std::errc::file_exists;
    if (isNew ? !HasFolderOf(path) : !node)
        return std::errc::no_such_file_or_directory;
    if (isNew)
        node = m_nodes[Normal(path)] =
            std::make_shared<Node>(Node{FileKind::File, {}, {}, false, m_now += std::chrono::seconds(1)});
    if (node->kind == FileKind::Folder)
        return std::errc::is_a_directory;
    if (mode != OpenMode::Read && node->isReadOnly)
        return std::errc::permission_denied;
    handle = std::make_unique<MemoryFile>(*this, std::move(node), mode);
    return {};
}

FileResult MemoryFiles::Rename(const Path& from, const Path& to)
{
    if (const FileResult result = Begin(); !result)
        return result;
    const auto node = Find(from);
    const auto old = Find(to);
    if (!node || !HasFolderOf(to))
        return std::errc::no_such_file_or_directory;
    if (old && (old->kind == FileKind::Folder || node->kind == FileKind::Folder))
        return std::errc::is_a_directory;
    const Path source = Normal(from);
    const Path target = Normal(to);
    Nodes moved;
    for (const auto& [path, held] : m_nodes) {
        const auto [sourceEnd, rest] = std::mismatch(source.begin(), source.end(), path.begin(), path.end());
        const bool moves = sourceEnd == source.end();
        Path place = moves ? target : path;
        for (auto element = rest; moves && element != path.end(); ++element)
            place /= *element;
        if (moves || path != target)
            moved[place] = held;
    }
    m_nodes = std::move(moved);
    FlushFolder(Normal(to).parent_path());
    return {};
}

FileResult MemoryFiles::Remove(const Path& path)
{
    if (const FileResult result = Begin(); !result)
        return result;
    const auto node = Find(path);
    if (!node)
        return std::errc::no_such_file_or_directory;
    if (node->kind == FileKind::Folder && HoldsAnything(path))
        return std::errc::directory_not_empty;
    m_nodes.erase(Normal(path));
    return {};
}

FileResult MemoryFiles::List(const Path& folder, std::vector<FolderEntry>& entries)
{
    entries.clear();
    if (const FileResult result = Begin(); !result)
        return result;
    const auto node = Find(folder);
    if (!node)
        return std::errc::no_such_file_or_directory;
    if (node->kind != FileKind::Folder)
        return std::errc::not_a_directory;
    for (const auto& [path, held] : m_nodes)
        if (path.parent_path() == Normal(folder))
            entries.push_back({path.filename(), held->kind});
    return {};
}

FileResult MemoryFiles::Stat(const Path& path, FileStatus& status)
{
    if (const FileResult result = Begin(); !result)
        return result;
    const auto node = Find(path);
    if (!node)
        return std::errc::no_such_file_or_directory;
    status = {node->kind, node->isReadOnly, static_cast<long long>(node->bytes.size()), node->modified};
    return {};
}

FileResult MemoryFiles::MakeFolder(const Path& path)
{
    if (const FileResult result = Begin(); !result)
        return result;
    if (Find(path))
        return std::errc::file_exists;
    if (!HasFolderOf(path))
        return std::errc::no_such_file_or_directory;
    m_nodes.emplace(Normal(path), std::make_shared<Node>(Node{FileKind::Folder, {}, {}, false, m_now}));
    FlushFolder(Normal(path).parent_path());
    return {};
}

FileResult MemoryFiles::SetReadOnly(const Path& path, bool readOnly)
{
    if (const FileResult result = Begin(); !result)
        return result;
    const auto node = Find(path);
    if (!node)
        return std::errc::no_such_file_or_directory;
    node->isReadOnly = readOnly;
    return {};
}
