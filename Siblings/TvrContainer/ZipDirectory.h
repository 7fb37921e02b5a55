// The table of an archive, read and checked before anything of the archive is used.
#pragma once

#include "siblings/TvlUtils/FileLayer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace TvrContainers {

/// Reads from a file in long pieces that it keeps, since readers of archives jump to and fro in short steps.
class PieceReader {
public:
    PieceReader(TvlUtils::SystemIO::FileHandle& file, long long size) : m_file(file), m_size(size) { }

    long long Size() const { return m_size; }
    /// Reads exactly `size` bytes; false when the file has not got them there.
    bool Read(long long offset, void* bytes, std::size_t size);
    /// Reads up to `size` bytes, fewer at the end alone; false when that fails.
    bool ReadSome(long long offset, void* bytes, std::size_t size, std::size_t& done);

private:
    // What is looked through for the end of an archive fits in: the record and the longest comment.
    static constexpr std::size_t kPiece = 66 * 1024;
    bool Fill(long long offset);

    TvlUtils::SystemIO::FileHandle& m_file;
    long long m_size;
    std::unique_ptr<char[]> m_piece;
    long long m_pieceAt = 0;
    std::size_t m_pieceSize = 0;
};

struct ZipEntry {
    std::string name;             // UTF-8
    std::uint32_t checksum = 0;   // CRC-32
    long long packed = 0;         // bytes
    long long unpacked = 0;       // bytes
    bool IsFolder() const { return name.ends_with('/'); }
};

/// Reads the entries in the order of the table. Returns why the archive is refused; empty for a good one.
/// Refused are: several parts, 64-bit sizes, encryption, methods other than storing and deflating, sizes that deflating
/// can't give, local headers that differ from the table, broken extra fields or comments, entries that overlap, and names
/// that are no place below the archive's root, stand twice or are links.
std::string ReadZipDirectory(PieceReader& file, std::vector<ZipEntry>& entries);

/// Whether a text is UTF-8.
bool IsUtf8(const std::string& text);
/// Whether a comment is UTF-8, and has no control characters but those of lines and columns.
bool IsUtf8Comment(const std::string& comment);

/// Why a name is refused; empty for a good one.
std::string RefusedName(const std::string& name);

}   // namespace TvrContainers
