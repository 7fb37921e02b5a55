#include "TvrContainer/ZipArchive.h"

#include "TvlUtils/FileAccess.h"
#include "TvrContainer/ZipSource.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <zip.h>

namespace TvrContainers {

using TvlUtils::SystemIO::FileLayer;
using TvlUtils::SystemIO::FileResult;

namespace {
struct CloseEntry {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

/// Whether it says nothing of the bytes of the archive.
bool IsForNow(const zip_error_t& error)
{
    constexpr int kMemory = -4;   // Z_MEM_ERROR of zlib
    switch (zip_error_code_zip(&error)) {
    case ZIP_ER_MEMORY:
    case ZIP_ER_READ:
    case ZIP_ER_SEEK:
        return true;
    case ZIP_ER_ZLIB:
        return zip_error_code_system(&error) == kMemory;
    default:
        return false;
    }
}
}   // namespace

ZipArchive::ZipArchive() = default;
ZipArchive::~ZipArchive() = default;
void ZipArchive::Discard::operator()(zip* archive) const { zip_discard(archive); }

std::string ZipArchive::Open(const TvlString& path)
{
    TvlUtils::SystemIO::FileStatus status;
    const FileResult opened = TvlUtils::SystemIO::Reported([&]() -> FileResult {
        const auto name = TvlUtils::SystemIO::PathOf(path);
        const FileResult found = FileLayer::Get().Stat(name, status);
        return found ? FileLayer::Get().Open(name, TvlUtils::SystemIO::OpenMode::Read, m_file) : found;
    });
    if (!opened)
        return TvlPlatform::ToUtf8(opened.Reason());
    m_reader = std::make_unique<PieceReader>(*m_file, status.size);
    return ReadZipDirectory(*m_reader, m_entries);
}

int ZipArchive::Find(std::string_view name) const
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const ZipEntry& entry) { return entry.name == name; });
    return found == m_entries.end() ? -1 : static_cast<int>(found - m_entries.begin());
}

std::string ZipArchive::ReasonOf(zip_error& error)
{
    m_hasFailedForNow = m_hasFailedForNow || IsForNow(error);
    return zip_error_strerror(&error);
}

std::string ZipArchive::OpenLibrary()
{
    if (m_archive)
        return {};
    m_source = std::make_unique<Source>(m_reader.get());
    zip_source_t* const source = m_source->Make();
    if (!source)
        throw std::bad_alloc();
    zip_error_t error;
    zip_error_init(&error);
    m_archive.reset(zip_open_from_source(source, m_reader ? 0 : ZIP_CREATE, &error));
    const std::string reason = m_archive ? std::string() : ReasonOf(error);
    zip_error_fini(&error);
    if (!m_archive)
        zip_source_free(source);
    m_source->Rethrow();
    if (m_archive && zip_get_num_entries(m_archive.get(), 0) != static_cast<zip_int64_t>(m_entries.size()))
        return "its table can be read in two ways";
    return reason;
}

std::string ZipArchive::Unpack(int index, const std::function<bool(std::string_view)>& take)
{
    if (std::string reason = OpenLibrary(); !reason.empty())
        return reason;
    const ZipEntry& entry = m_entries[static_cast<std::size_t>(index)];
    const std::unique_ptr<zip_file_t, CloseEntry> file(
        zip_fopen_index(m_archive.get(), static_cast<zip_uint64_t>(index), 0));
    m_source->Rethrow();
    if (!file)
        return ReasonOf(*zip_get_error(m_archive.get()));
    constexpr std::size_t kPiece = 64 * 1024;
    const auto buffer = std::make_unique_for_overwrite<char[]>(kPiece);
    // The checksum is compared in the read that finds the end.
    for (long long size = 0;;) {
        const zip_int64_t done = zip_fread(file.get(), buffer.get(), kPiece);
        m_source->Rethrow();
        if (done < 0)
            return ReasonOf(*zip_file_get_error(file.get()));
        if (done == 0)
            return size == entry.unpacked ? std::string() : "it is shorter than it says";
        size += done;
        if (size > entry.unpacked)
            return "it is longer than it says";
        if (!take({buffer.get(), static_cast<std::size_t>(done)}))
            return "it was given up";
    }
}

std::string ZipArchive::Rewrite(const ZipChanges& changes, std::string& bytes)
{
    if (std::string reason = OpenLibrary(); !reason.empty())
        return reason;
    for (const auto& [name, content] : changes) {
        const int old = Find(name);
        if (!content) {
            if (old >= 0 && zip_delete(m_archive.get(), static_cast<zip_uint64_t>(old)) < 0)
                return zip_strerror(m_archive.get());
            continue;
        }
        zip_source_t* const source = zip_source_buffer(m_archive.get(), content->data(), content->size(), 0);
        if (source && old >= 0 && zip_file_replace(m_archive.get(), static_cast<zip_uint64_t>(old), source, 0) == 0)
            continue;
        if (source && old < 0 && zip_file_add(m_archive.get(), name.c_str(), source, ZIP_FL_ENC_UTF_8) >= 0)
            continue;
        zip_source_free(source);
        return zip_strerror(m_archive.get());
    }
    const bool isMade = zip_close(m_archive.get()) == 0;
    const std::string reason = isMade ? std::string() : zip_strerror(m_archive.get());
    if (isMade)
        static_cast<void>(m_archive.release());
    m_archive.reset();
    m_source->Rethrow();
    bytes = std::move(m_source->Output());
    m_reader.reset();
    m_file.reset();
    return reason;
}

}   // namespace TvrContainers
