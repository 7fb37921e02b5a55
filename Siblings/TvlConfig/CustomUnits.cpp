// "CustomUnits.txt" of the user's folder: a line that names the format, then one record a line.
#include "siblings/TvlConfig/CustomUnits.h"

#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {
namespace SystemIO = TvlUtils::SystemIO;

constexpr int kMostRecords = 64;
// Of a file that is worth reading: far more than kMostRecords records have, for whoever adds lines that are none.
constexpr std::size_t kMostBytes = 1u << 20;
constexpr std::size_t kMostLines = 1024;
constexpr std::string_view kFormat = "TvlCustomUnits 1";

TvlString FilePath()
{
    const TvlString folder = TvlConfig::GetUserDir();
    return folder.IsEmpty() ? folder : SystemIO::Path::Combine(folder, L"CustomUnits.txt");
}

/// The lines, or the first of too many.
std::vector<std::string> Lines(std::string_view bytes)
{
    std::vector<std::string> lines;
    while (!bytes.empty() && lines.size() <= kMostLines) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        std::string_view line = bytes.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.emplace_back(line);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return lines;
}

void LogTrouble(const wchar_t* trouble, const TvlString& path, const TvlString& reason)
{
    TvlUtils::LogMessage(
        TvlUtils::LogLevel::Error, TvlString().Format(L"custom units: \"%s\" %s: %s", path, trouble, reason));
}

using Records = std::vector<std::string>;

/// Records of the file as UTF-8, none when there is no file; nothing for a file that is not ours to read.
std::optional<Records> ReadRecords(const TvlString& path)
{
    if (path.IsEmpty())
        return Records();
    std::string bytes;
    const SystemIO::FileResult read = SystemIO::File::ReadAll(path, bytes, kMostBytes);
    if (read.IsMissing())
        return Records();
    std::vector<std::string> lines = Lines(bytes);
    if (!read) {
        LogTrouble(L"can't be read", path, read.Reason());
        return std::nullopt;
    }
    if (!lines.empty() && lines.front() != kFormat) {
        LogTrouble(L"can't be read", path, L"another version wrote it");
        return std::nullopt;
    }
    if (lines.size() > kMostLines) {
        LogTrouble(L"can't be read", path, L"it has too many lines");
        return std::nullopt;
    }
    if (!lines.empty())
        lines.erase(lines.begin());
    return lines;
}

bool WriteRecords(const TvlString& path, const Records& records)
{
    std::string bytes(kFormat);
    bytes += '\n';
    for (const std::string& record : records)
        bytes += record + '\n';
    SystemIO::FileResult written = SystemIO::Folder::EnsureExists(TvlConfig::GetUserDir());
    if (written)
        written = SystemIO::File::WriteAside(path, bytes);
    if (!written)
        LogTrouble(L"can't be written", path, written.Reason());
    return static_cast<bool>(written);
}

/// The file as it was when a caller began to go through it: its next record comes from the same reading, so that a long
/// file is read once and not once for each record.
struct Reading {
    std::optional<Records> records;
    std::size_t next = 0;   // index that continues it
};

std::mutex readingLock;
Reading reading;

/// The records for whoever asks for this one; null for a file that is not ours to read.
const Records* ReadOn(std::size_t place)
{
    if (!reading.records || reading.next != place)
        reading.records = ReadRecords(FilePath());
    reading.next = place + 1;
    return reading.records ? &*reading.records : nullptr;
}

/// The text up to its end mark, or up to the buffer's end.
std::wstring_view Bounded(const wchar_t* text)
{
    return {text, static_cast<std::size_t>(std::find(text, text + kCustomUnitTextSize - 1, L'\0') - text)};
}

/// What is to become of the file as it was found.
class Changes {
public:
    Changes() : m_before(m_path.IsEmpty() ? std::nullopt : ReadRecords(m_path)), m_after(m_before.value_or(Records()))
    {
    }

    /// False for a text with a line break, and for a file that is not ours to write.
    bool Put(int index, std::wstring_view record)
    {
        if (!m_before || record.find_first_of(L"\r\n") != record.npos)
            return false;
        const auto place = static_cast<std::size_t>(index);
        m_after.resize(std::max(m_after.size(), place + 1));
        m_after[place] = TvlPlatform::ToUtf8(record);
        while (!m_after.empty() && m_after.back().empty())
            m_after.pop_back();
        return true;
    }
    const Records& Now() const { return m_after; }
    /// One step, or none when nothing changes.
    bool Write() const
    {
        reading.records.reset();
        return m_before && (*m_before == m_after || WriteRecords(m_path, m_after));
    }

private:
    TvlString m_path = FilePath();
    std::optional<Records> m_before;
    Records m_after;
};

std::optional<Changes> batch;   // guarded as the reading is
}   // namespace

int INIGetCustomUnit(int index, wchar_t* text, int*)
{
    if (!text || index < 0)
        return 0;
    const std::lock_guard hold(readingLock);
    const auto place = static_cast<std::size_t>(index);
    const Records* const records = batch ? &batch->Now() : ReadOn(place);
    if (!records || place >= records->size())
        return 0;
    const std::wstring record = TvlPlatform::FromUtf8((*records)[place]);
    const std::size_t length = std::min<std::size_t>(record.size(), kCustomUnitTextSize - 1);
    std::copy_n(record.data(), length, text);
    text[length] = 0;
    return length > 0;
}

int INISetCustomUnit(int index, wchar_t* text)
{
    if (!text || index < 0 || index >= kMostRecords)
        return 0;
    const std::lock_guard hold(readingLock);
    if (batch)
        return batch->Put(index, Bounded(text));
    Changes changes;
    return changes.Put(index, Bounded(text)) && changes.Write();
}

int INIGetMaxNoOfCustomUnit() { return kMostRecords; }

namespace TvlConfig {

CustomUnitBatch::CustomUnitBatch()
{
    const std::lock_guard hold(readingLock);
    batch.emplace();
}

CustomUnitBatch::~CustomUnitBatch()
{
    const std::lock_guard hold(readingLock);
    batch.reset();
}

bool CustomUnitBatch::Commit()
{
    const std::lock_guard hold(readingLock);
    return batch && std::exchange(batch, std::nullopt)->Write();
}

}   // namespace TvlConfig
