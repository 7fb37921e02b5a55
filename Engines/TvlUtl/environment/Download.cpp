#include "Download.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Internet.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <vector>

namespace TvlUtl {

namespace SystemIO = TvlUtils::SystemIO;

namespace {
constexpr const wchar_t* kAgent = L"Tovel gzip download";
constexpr const wchar_t* kHeaders = L"Accept-Encoding: gzip, deflate\n";
constexpr std::size_t kBlock = 4096;          // bytes
constexpr long long kMostBytes = 4LL << 30;   // unpacked: a small answer may stand for a large one

constexpr std::wstring_view kAsideEnd = L".aside";
constexpr std::size_t kAsideDigits = 16;
// Whoever is at work has written within the last minute, or gives up.
constexpr std::chrono::minutes kLongestSilence{2};

/// What the names of our files beside the destination begin with. They are of one length, whatever the file's own: that may
/// be as long as the file system takes.
TvlString AsideStem(const TvlString& destination)
{
    std::uint32_t hash = 0x811C9DC5;   // FNV-1a
    for (const char byte : TvlPlatform::ToUtf8(SystemIO::Path::GetFileName(destination).MakeLower()))
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x01000193;
    return TvlString().Format(L"%08x.", hash);
}

/// The name that files of ours have until they take the place of another one.
TvlString NewNameBeside(const TvlString& destination)
{
    return SystemIO::Path::GetTempFileNameW(
        SystemIO::Path::GetFolderName(destination), AsideStem(destination), TvlString(kAsideEnd));
}

bool IsAsideOf(std::wstring_view stem, std::wstring_view name)
{
    if (name.size() != stem.size() + kAsideDigits + kAsideEnd.size() || !name.starts_with(stem)
        || !name.ends_with(kAsideEnd))
        return false;
    const std::wstring_view digits = name.substr(stem.size(), kAsideDigits);
    return digits.find_first_not_of(L"0123456789abcdef") == digits.npos;
}

/// Takes away what downloads to this file left behind when they were killed. Other processes may be at work on theirs.
void RemoveLeftovers(const TvlString& destination)
{
    SystemIO::FileLayer& files = SystemIO::FileLayer::Get();
    const TvlString folder = SystemIO::Path::GetFolderName(destination);
    const TvlString stem = AsideStem(destination);
    SystemIO::FileStatus own;
    std::vector<SystemIO::FolderEntry> entries;
    if (!files.Stat(SystemIO::ToFilePath(destination), own)
        || !files.List(SystemIO::ToFilePath(folder.IsEmpty() ? TvlString(L".") : folder), entries))
        return;
    for (const SystemIO::FolderEntry& entry : entries) {
        const TvlString name = SystemIO::FromFilePath(entry.name);
        if (entry.kind != SystemIO::FileKind::File || !IsAsideOf(stem, name))
            continue;
        const TvlString path = SystemIO::Path::Combine(folder, name);
        SystemIO::FileStatus left;
        if (files.Stat(SystemIO::ToFilePath(path), left) && left.modified + kLongestSilence < own.modified)
            SystemIO::File::Delete(path);
    }
}

/// The new file, which goes again unless it takes its place: whoever drives the network may throw.
class Aside {
public:
    explicit Aside(TvlString path) : m_path(std::move(path)) { }
    ~Aside()
    {
        if (!m_isInPlace)
            SystemIO::File::Delete(m_path);
    }
    Aside(const Aside&) = delete;
    Aside& operator=(const Aside&) = delete;

    bool MoveTo(const TvlString& destination)
    {
        m_isInPlace = SystemIO::File::Move(m_path, destination);
        return m_isInPlace;
    }

private:
    TvlString m_path;
    bool m_isInPlace = false;
};

/// Writes a block behind those before it; `offset` goes along.
bool WriteBlock(SystemIO::FileHandle& file, long long& offset, const char* bytes, std::size_t size)
{
    while (size > 0) {
        std::size_t done = 0;
        if (!file.WriteAt(offset, bytes, size, done))
            return false;
        offset += static_cast<long long>(done);
        bytes += done;
        size -= done;
    }
    return true;
}

enum class Stored { Nothing, Something, TooMuch };

/// Stores an answer to its end, or to where the connection breaks.
Stored Store(Ports::InternetFile& answer, SystemIO::FileHandle& file)
{
    std::array<char, kBlock> block;
    long long offset = 0;
    long long size = 0;
    auto stored = Stored::Nothing;
    bool good = true;
    while (const std::size_t count = answer.Read(block.data(), block.size()).value_or(0)) {
        size += static_cast<long long>(count);
        if (size > kMostBytes)
            return Stored::TooMuch;
        // A stream that has failed takes nothing more, though the answer is read to its end.
        good = good && WriteBlock(file, offset, block.data(), count);
        if (good)
            stored = Stored::Something;
    }
    return stored;
}
}   // namespace

bool WinInetGzipDownload(const TvlString& url, const TvlString& destination)
{
    Ports::Internet& internet = Ports::Internet::Get();
    if (!internet.IsUrl(url.Std()))
        return false;
    const auto answer = internet.OpenUrl(kAgent, url.Std(), kHeaders);
    if (!answer)
        return false;
    const TvlString temporary = NewNameBeside(destination);
    std::unique_ptr<SystemIO::FileHandle> opened;
    if (!SystemIO::FileLayer::Get().CreateLike(
            SystemIO::ToFilePath(temporary), SystemIO::ToFilePath(destination), opened))
        return false;
    Aside aside(temporary);
    const auto file = std::move(opened);   // closed before it is deleted
    const Stored stored = Store(*answer, *file);
    static_cast<void>(file->Flush());   // failures of these show in no result
    static_cast<void>(file->Close());
    if (stored == Stored::TooMuch) {
        TvlUtils::LogMessage(TvlUtils::LogLevel::Error,
            TvlString().Format(
                L"A download has more than %I64d bytes, nothing is stored: %s", kMostBytes, destination));
        return false;
    }
    if (!aside.MoveTo(destination))
        return false;
    RemoveLeftovers(destination);
    return stored == Stored::Something;
}

}   // namespace TvlUtl
