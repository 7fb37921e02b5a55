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

/// Records of the file as UTF-8, none when there is no file; nothing for a file that is not ours to read.
std::optional<std::vector<std::string>> ReadRecords(const TvlString& path)
{
    if (path.IsEmpty())
        return std::vector<std::string>();
    std::string bytes;
    const SystemIO::FileResult read = SystemIO::File::ReadAll(path, bytes, kMostBytes);
    if (read.IsMissing())
        return std::vector<std::string>();
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

bool WriteRecords(const TvlString& path, const std::vector<std::string>& records)
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
    std::optional<std::vector<std::string>> records;
    std::size_t next = 0;   // index that continues it
};

std::mutex readingLock;
Reading reading;

/// The text up to its end mark, or up to the buffer's end.
std::wstring_view Bounded(const wchar_t* text)
{
    return {text, static_cast<std::size_t>(std::find(text, text + kCustomUnitTextSize - 1, L'\0') - text)};
}
}   // namespace

int INIGetCustomUnit(int index, wchar_t* text, int*)
{
    if (!text || index < 0)
        return 0;
    const std::lock_guard hold(readingLock);
    const auto place = static_cast<std::size_t>(index);
    if (!reading.records || reading.next != place)
        reading.records = ReadRecords(FilePath());
    reading.next = place + 1;
    if (!reading.records || place >= reading.records->size())
        return 0;
    const std::wstring record = TvlPlatform::FromUtf8((*reading.records)[place]);
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
    reading.records.reset();
    const std::wstring_view record = Bounded(text);
    const TvlString path = FilePath();
    auto records = ReadRecords(path);
    if (path.IsEmpty() || !records || record.find_first_of(L"\r\n") != std::wstring_view::npos)
        return 0;
    const auto before = *records;
    const auto place = static_cast<std::size_t>(index);
    records->resize(std::max(records->size(), place + 1));
    (*records)[place] = TvlPlatform::ToUtf8(record);
    while (!records->empty() && records->back().empty())
        records->pop_back();
    return *records == before || WriteRecords(path, *records);
}

int INIGetMaxNoOfCustomUnit() { return kMostRecords; }
