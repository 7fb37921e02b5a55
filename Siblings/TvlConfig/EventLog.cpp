// The files of analytics events.
#include "siblings/TvlConfig/EventLog.h"

#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>

namespace ProductAnalytics {

namespace SystemIO = TvlUtils::SystemIO;
using SystemIO::FileHandle;
using SystemIO::FileLayer;
using SystemIO::FileResult;
using SystemIO::OpenMode;

namespace {
/// Whether the next line may begin right at the end of the file. No where nobody can tell: the empty line that a line feed
/// too many makes costs readers nothing, while a part of a line before the next one would cost both.
bool EndsWithALine(FileHandle& file, std::optional<long long> size)
{
    char end[2] = {};   // one byte more than there should be: somebody may have written meanwhile
    std::size_t done = 0;
    if (!size || !file.ReadAt(std::max(*size - 1, 0LL), end, sizeof(end), done))
        return false;
    return *size == 0 ? done == 0 : done == 1 && end[0] == '\n';
}

/// The place behind the next line feed from `position` on; nothing when there is none.
std::optional<long long> FindLineEnd(FileHandle& file, long long position)
{
    std::array<char, 1 << 16> piece;
    for (std::size_t done = piece.size(); done == piece.size();) {
        if (!file.ReadAt(position, piece.data(), piece.size(), done))
            return std::nullopt;
        const std::string_view bytes(piece.data(), done);
        if (const std::size_t end = bytes.find('\n'); end != bytes.npos)
            return position + static_cast<long long>(end) + 1;
        position += static_cast<long long>(done);
    }
    return std::nullopt;
}

std::unique_ptr<FileHandle> OpenForReading(const TvlString& path)
{
    std::unique_ptr<FileHandle> file;
    if (!FileLayer::Get().Open(SystemIO::ToFilePath(path), OpenMode::Read, file))
        file.reset();
    return file;
}

/// Bytes of a file, 0 when it is missing; nothing where nobody can tell.
std::optional<long long> SizeOf(const TvlString& path)
{
    SystemIO::FileStatus status;
    const FileResult found = FileLayer::Get().Stat(SystemIO::ToFilePath(path), status);
    return found ? std::optional(status.size) : found.IsMissing() ? std::optional(0LL) : std::nullopt;
}

/// Files that were put by, the oldest first; nothing where nobody can tell.
std::optional<std::vector<TvlString>> ListOlder(const TvlString& folder)
{
    std::vector<SystemIO::FolderEntry> entries;
    const FileResult listed = FileLayer::Get().List(SystemIO::ToFilePath(folder), entries);
    if (!listed && !listed.IsMissing())
        return std::nullopt;
    std::vector<TvlString> older;
    for (const SystemIO::FolderEntry& entry : entries)
        if (const TvlString name = SystemIO::FromFilePath(entry.name);
            entry.kind != SystemIO::FileKind::Folder && SystemIO::File::MatchesMask(name, L"events-*.jsonl"))
            older.push_back(SystemIO::Path::Combine(folder, name));
    std::sort(older.begin(), older.end());
    return older;
}

// Of a file that is put by. Its eight digits are always there, so that names in their order are numbers in theirs.
constexpr int kMostNumber = 99'999'999;

/// The number in the name of a file that was put by; 0 without one.
int NumberOf(const TvlString& path)
{
    const std::wstring name = SystemIO::Path::GetFileName(path).Std();
    const std::size_t begin = std::min(name.find(L'-'), name.size() - 1) + 1;
    int number = 0;
    for (std::size_t i = begin; i < name.size() && name[i] >= L'0' && name[i] <= L'9' && number <= kMostNumber / 10;
         ++i)
        number = 10 * number + (name[i] - L'0');
    return number;
}
}   // namespace

EventLog::EventLog(TvlString folder, long long sizeLimit) : m_folder(std::move(folder)), m_sizeLimit(sizeLimit) { }

TvlString EventLog::File() const { return SystemIO::Path::Combine(m_folder, L"events.jsonl"); }

std::vector<TvlString> EventLog::OlderFiles() const { return ListOlder(m_folder).value_or(std::vector<TvlString>()); }

void EventLog::PutBy(const StoredEvent& event) const
{
    auto older = ListOlder(m_folder);
    if (!older)
        return;   // a name below those of older files would make this one the next to go
    const int number = older->empty() ? 1 : std::min(NumberOf(older->back()) + 1, kMostNumber);
    TvlString time = event.time;
    for (const wchar_t mark : {L'-', L':', L'.'})
        time.Remove(mark);
    // A name that nobody else takes: another process may put a file by at the same moment, and then loses nothing. The time
    // is for people: clocks go back, and the number alone tells what is older.
    const TvlString name =
        TvlString().Format(L"events-%08d-%s-%s.jsonl", number, time, TvlUtils::Guid::Generate().ToString().Left(8));
    if (!SystemIO::File::Move(File(), SystemIO::Path::Combine(m_folder, name)))
        return;
    older->emplace_back();   // its place behind all others
    for (std::size_t i = 0; i + kEventFilesKept < older->size(); ++i)
        SystemIO::File::Delete((*older)[i]);
}

FileResult EventLog::Append(const StoredEvent& event) const
{
    std::string line = FormatEvent(event);
    if (line.size() > kLongestEvent)
        return std::errc::message_size;
    static std::mutex lock;   // threads of one process would put by a file twice
    const std::scoped_lock hold(lock);
    if (const FileResult made = SystemIO::Folder::EnsureExists(m_folder); !made)
        return made;
    if (SizeOf(File()) >= m_sizeLimit)
        PutBy(event);

    std::unique_ptr<FileHandle> file;
    if (const FileResult opened = FileLayer::Get().Open(SystemIO::ToFilePath(File()), OpenMode::Append, file); !opened)
        return opened;
    if (!EndsWithALine(*file, SizeOf(File())))
        line.insert(line.begin(), '\n');
    std::size_t done = 0;
    if (const FileResult written = file->WriteAt(0, line.data(), line.size(), done); !written)
        return written;
    const FileResult closed = file->Close();
    return done < line.size() ? std::errc::no_space_on_device : closed;
}

std::vector<StoredEvent> EventReader::ReadNew()
{
    constexpr int kAttempts = 100;
    std::vector<StoredEvent> events;
    for (int attempt = 0; attempt < kAttempts && !ReadOnce(events); ++attempt)
        continue;
    return events;
}

bool EventReader::ReadOnce(std::vector<StoredEvent>& events)
{
    const auto older = ListOlder(m_folder);
    const std::unique_ptr<FileHandle> current = OpenForReading(m_log.File());
    const auto size = SizeOf(m_log.File());
    if (!older || !size || ListOlder(m_folder) != older)
        return false;   // a file was put by in between, and nobody knows which one was opened

    for (const TvlString& path : *older) {
        if (m_read.contains(path))
            continue;
        // The first of the new ones is the file that was written to before.
        if (const auto file = OpenForReading(path))
            ReadLines(*file, m_position, true, events);
        m_position = 0;
    }
    m_read = std::set<TvlString>(older->begin(), older->end());
    if (*size < m_position)
        m_position = 0;   // somebody has emptied it
    if (current)
        m_position = ReadLines(*current, m_position, false, events);
    return true;
}

long long EventReader::ReadLines(
    FileHandle& file, long long position, bool isComplete, std::vector<StoredEvent>& events)
{
    std::string bytes(kLongestEvent, '\0');
    for (;;) {
        std::size_t done = 0;
        if (!file.ReadAt(position, bytes.data(), bytes.size(), done))
            return position;
        const std::string_view read(bytes.data(), done);
        const std::size_t linesSize = read.rfind('\n') + 1;   // 0 without any
        TakeLines(read.substr(0, linesSize), events);
        if (linesSize > 0) {
            position += static_cast<long long>(linesSize);
            continue;
        }
        const auto end = done == bytes.size() ? FindLineEnd(file, position) : std::nullopt;
        m_skipped += end || (isComplete && done > 0) ? 1 : 0;
        if (!end)
            return position;
        position = *end;
    }
}

void EventReader::TakeLines(std::string_view bytes, std::vector<StoredEvent>& events)
{
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        const std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(end + 1);
        if (auto event = ParseEvent(line))
            events.push_back(*std::move(event));
        else if (!line.empty())
            ++m_skipped;
    }
}

}   // namespace ProductAnalytics
