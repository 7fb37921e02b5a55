// The files of analytics events.
#include "siblings/TvlConfig/EventLog.h"

#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <mutex>

namespace ProductAnalytics {

namespace SystemIO = TvlUtils::SystemIO;
using SystemIO::FileHandle;
using SystemIO::FileLayer;
using SystemIO::FileResult;
using SystemIO::OpenMode;

namespace {
constexpr std::size_t kPiece = 1 << 20;   // bytes read in one go

/// The last byte of a file that has `size` bytes; a line feed for an empty one.
char LastByte(FileHandle& file, long long size)
{
    char last = '\n';
    std::size_t done = 0;
    if (size > 0 && !file.ReadAt(size - 1, &last, 1, done))
        return '\n';
    return last;
}

/// Bytes of a file from `position` on: up to its end, or enough of them to have the end of a line.
std::string ReadLineEnds(FileHandle& file, long long position)
{
    std::string bytes;
    for (;;) {
        const std::size_t before = bytes.size();
        bytes.resize(before + kPiece);
        std::size_t done = 0;
        if (!file.ReadAt(position + static_cast<long long>(before), bytes.data() + before, kPiece, done))
            done = 0;
        bytes.resize(before + done);
        if (done < kPiece || bytes.find('\n', before) != std::string::npos)
            return bytes;
    }
}

std::unique_ptr<FileHandle> OpenForReading(const TvlString& path)
{
    std::unique_ptr<FileHandle> file;
    if (!FileLayer::Get().Open(SystemIO::ToFilePath(path), OpenMode::Read, file))
        file.reset();
    return file;
}

long long SizeOf(const TvlString& path)
{
    SystemIO::FileStatus status;
    return FileLayer::Get().Stat(SystemIO::ToFilePath(path), status) ? status.size : 0;
}
}   // namespace

EventLog::EventLog(TvlString folder, long long sizeLimit) : m_folder(std::move(folder)), m_sizeLimit(sizeLimit) { }

TvlString EventLog::File() const { return SystemIO::Path::Combine(m_folder, L"events.jsonl"); }

std::vector<TvlString> EventLog::OlderFiles() const
{
    // Names begin with the time at which their file was put by.
    return SystemIO::File::Find(m_folder, L"events-*.jsonl", false, false);
}

void EventLog::PutBy(const StoredEvent& event) const
{
    TvlString time = event.time;
    for (const wchar_t mark : {L'-', L':', L'.'})
        time.Remove(mark);
    // A name that nobody else takes: another process may put a file by at the same moment, and then loses nothing.
    const TvlString name = L"events-" + time + L'-' + TvlUtils::Guid::Generate().ToString().Left(8) + L".jsonl";
    if (!SystemIO::File::Move(File(), SystemIO::Path::Combine(m_folder, name)))
        return;
    const std::vector<TvlString> older = OlderFiles();
    for (std::size_t i = 0; i + kEventFilesKept < older.size(); ++i)
        SystemIO::File::Delete(older[i]);
}

FileResult EventLog::Append(const StoredEvent& event) const
{
    static std::mutex lock;   // threads of one process would put by a file twice
    const std::scoped_lock hold(lock);
    if (const FileResult made = SystemIO::Folder::EnsureExists(m_folder); !made)
        return made;
    if (SizeOf(File()) >= m_sizeLimit)
        PutBy(event);

    std::unique_ptr<FileHandle> file;
    if (const FileResult opened = FileLayer::Get().Open(SystemIO::ToFilePath(File()), OpenMode::Append, file); !opened)
        return opened;
    std::string line = FormatEvent(event);
    const long long size = SizeOf(File());
    if (LastByte(*file, size) != '\n')
        line.insert(line.begin(), '\n');
    std::size_t done = 0;
    if (const FileResult written = file->WriteAt(size, line.data(), line.size(), done); !written)
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
    const std::vector<TvlString> older = m_log.OlderFiles();
    const std::unique_ptr<FileHandle> current = OpenForReading(m_log.File());
    const long long size = SizeOf(m_log.File());
    if (m_log.OlderFiles() != older)
        return false;   // a file was put by in between, and nobody knows which one was opened

    for (const TvlString& path : older) {
        if (m_read.contains(path))
            continue;
        // The first of the new ones is the file that was written to before.
        if (const auto file = OpenForReading(path))
            ReadLines(*file, m_position, true, events);
        m_position = 0;
    }
    m_read = std::set<TvlString>(older.begin(), older.end());
    if (size < m_position)
        m_position = 0;   // somebody has emptied it
    if (current)
        m_position = ReadLines(*current, m_position, false, events);
    return true;
}

long long EventReader::ReadLines(
    FileHandle& file, long long position, bool isComplete, std::vector<StoredEvent>& events)
{
    for (;;) {
        const std::string bytes = ReadLineEnds(file, position);
        const std::size_t end = bytes.rfind('\n') + 1;   // 0 without any
        TakeLines(std::string_view(bytes).substr(0, end), events);
        position += static_cast<long long>(end);
        if (end == 0) {
            m_skipped += isComplete && !bytes.empty() ? 1 : 0;
            return position;
        }
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
