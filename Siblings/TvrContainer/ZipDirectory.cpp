// Layout and numbers are those of the .ZIP file format's application note (APPNOTE.TXT 6.3, sections 4.3 and 4.4).
#include "TvrContainer/ZipDirectory.h"

#include "siblings/TvrContainer/DocContainer.h"

#include <algorithm>
#include <cstring>
#include <unordered_set>

namespace TvrContainers {

bool PieceReader::Fill(long long offset)
{
    // Near the end the last piece is the one to have: it holds the table as a rule.
    const long long first = std::max(0LL, std::min(offset, m_size - static_cast<long long>(kPiece)));
    if (!m_piece)
        m_piece = std::make_unique_for_overwrite<char[]>(kPiece);
    m_pieceSize = 0;
    m_pieceAt = first;
    const auto size = static_cast<std::size_t>(std::min<long long>(kPiece, m_size - first));
    return m_file.ReadAt(first, m_piece.get(), size, m_pieceSize) && m_pieceSize == size;
}

bool PieceReader::Read(long long offset, void* bytes, std::size_t size)
{
    if (offset < 0 || offset > m_size || size > static_cast<unsigned long long>(m_size - offset))
        return false;
    std::size_t done = 0;
    if (size > kPiece)
        return m_file.ReadAt(offset, bytes, size, done) && done == size;
    const auto isKept = [&] { return offset >= m_pieceAt && offset - m_pieceAt + size <= m_pieceSize; };
    if (!isKept() && (!Fill(offset) || !isKept()))
        return false;
    std::memcpy(bytes, m_piece.get() + (offset - m_pieceAt), size);
    return true;
}

bool PieceReader::ReadSome(long long offset, void* bytes, std::size_t size, std::size_t& done)
{
    const long long left = std::clamp(m_size - offset, 0LL, m_size);
    done = static_cast<std::size_t>(std::min<unsigned long long>(size, static_cast<unsigned long long>(left)));
    return done == 0 || Read(offset, bytes, done);
}

namespace {
constexpr std::size_t kLocalSize = 30, kCentralSize = 46, kEndSize = 22;   // without names and comments
constexpr std::size_t kMaxComment = 0xFFFF;
constexpr std::uint32_t kLocalMark = 0x04034b50, kCentralMark = 0x02014b50, kEndMark = 0x06054b50;
constexpr unsigned kEncrypted = 1, kSizesBehind = 8, kPatch = 1 << 5, kStrong = 1 << 6, kUtf8 = 1 << 11,
                   kMasked = 1 << 13;
constexpr unsigned kStored = 0, kDeflated = 8;
constexpr unsigned kUnicodePath = 0x7075;         // a field with another form of the name
constexpr std::uint32_t kIn64Bits = 0xFFFFFFFF;   // the real number stands elsewhere
// Deflating shrinks to 1/1032 at best: 258 bytes in two bits.
constexpr long long kMaxRatio = 1032;

unsigned Get16(const char* bytes)
{
    return static_cast<unsigned char>(bytes[0]) | static_cast<unsigned>(static_cast<unsigned char>(bytes[1])) << 8;
}
std::uint32_t Get32(const char* bytes) { return Get16(bytes) | static_cast<std::uint32_t>(Get16(bytes + 2)) << 16; }

/// Where the table stands.
struct Table {
    std::size_t count = 0;
    long long offset = 0;
    long long size = 0;
};

/// A record of the table, and what its entry covers in the file.
struct Record {
    ZipEntry entry;
    unsigned flags = 0;
    unsigned method = 0;
    std::uint32_t attributes = 0;
    long long first = 0;   // of the local header
    long long end = 0;     // behind the packed bytes
};

/// The position of the record at the archive's end, or -1. Its comment reaches to the end of the file exactly.
long long FindEnd(PieceReader& file)
{
    const auto tail = static_cast<std::size_t>(std::min<long long>(file.Size(), kEndSize + kMaxComment));
    std::string bytes(tail, '\0');
    if (tail < kEndSize || !file.Read(file.Size() - static_cast<long long>(tail), bytes.data(), tail))
        return -1;
    for (std::size_t at = tail - kEndSize + 1; at-- > 0;)
        if (Get32(&bytes[at]) == kEndMark && at + kEndSize + Get16(&bytes[at + 20]) == tail)
            return file.Size() - static_cast<long long>(tail - at);
    return -1;
}

std::string ReadEnd(PieceReader& file, Table& table)
{
    const long long end = FindEnd(file);
    char record[kEndSize];
    if (end < 0 || !file.Read(end, record, sizeof record))
        return "it has no end";
    table = {Get16(record + 10), Get32(record + 16), Get32(record + 12)};
    if (Get32(record + 4) != 0 || Get16(record + 8) != table.count)
        return "it is one part of several";
    if (table.offset + table.size != end)
        return "its table is not where its end says";
    if (table.count > DocContainer::kMaxEntries)
        return "it has too many entries";
    if (static_cast<long long>(table.count * kCentralSize) > table.size)
        return "its table is too short";
    return {};
}

/// Fields that writers add to a header: each has a number of two bytes, its size in two, and so many bytes. At the end up
/// to three zeros may stand.
std::string CheckExtra(std::string_view fields, const std::string& name)
{
    constexpr std::size_t kHeader = 4;
    constexpr std::size_t kBeforePath = 5;   // a version and a checksum
    while (fields.size() >= kHeader) {
        const std::size_t size = Get16(&fields[2]);
        if (fields.size() - kHeader < size)
            return "its extra fields are broken";
        const std::string_view field = fields.substr(kHeader, size);
        if (Get16(fields.data()) == kUnicodePath && (size < kBeforePath || field.substr(kBeforePath) != name))
            return "it has two names";
        fields.remove_prefix(kHeader + size);
    }
    return fields.find_first_not_of('\0') == fields.npos ? std::string() : "its extra fields are broken";
}

/// Takes the record at `at`, which goes behind it.
std::string TakeRecord(std::string_view table, std::size_t& at, Record& record)
{
    if (table.size() - at < kCentralSize || Get32(&table[at]) != kCentralMark)
        return "its table is broken";
    const char* const fields = &table[at];
    const std::size_t nameSize = Get16(fields + 28);
    const std::size_t extraSize = Get16(fields + 30);
    const std::size_t commentSize = Get16(fields + 32);
    const std::size_t size = kCentralSize + nameSize + extraSize + commentSize;
    if (table.size() - at < size)
        return "its table is broken";
    record.flags = Get16(fields + 8);
    record.method = Get16(fields + 10);
    record.entry.checksum = Get32(fields + 16);
    record.entry.packed = Get32(fields + 20);
    record.entry.unpacked = Get32(fields + 24);
    record.attributes = Get32(fields + 38);
    record.first = Get32(fields + 42);
    record.entry.name.assign(fields + kCentralSize, nameSize);
    const bool isElsewhere = record.entry.packed == kIn64Bits || record.entry.unpacked == kIn64Bits
        || record.first == kIn64Bits || Get16(fields + 34) != 0;
    at += size;
    if (isElsewhere)
        return "it has 64-bit sizes or several parts";
    // The library that unpacks takes nothing else.
    if ((record.flags & kUtf8) && !IsUtf8Comment({fields + kCentralSize + nameSize + extraSize, commentSize}))
        return "its comment is no UTF-8";
    return CheckExtra({fields + kCentralSize + nameSize, extraSize}, record.entry.name);
}

/// What a record says of itself.
std::string CheckRecord(const Record& record)
{
    const ZipEntry& entry = record.entry;
    if (record.flags & (kEncrypted | kPatch | kStrong | kMasked))
        return "it is encrypted or a patch";
    if (record.method != kStored && record.method != kDeflated)
        return "it is packed by an unknown method";
    if (record.method == kStored ? entry.packed != entry.unpacked : entry.unpacked > entry.packed * kMaxRatio)
        return "its sizes are impossible";
    if (entry.IsFolder() && entry.unpacked != 0)
        return "it is a folder with content";
    // File types of Unix stand in the upper half, or zero.
    constexpr unsigned kTypes = 0170000, kFile = 0100000, kFolder = 0040000;
    const unsigned type = record.attributes >> 16 & kTypes;
    if (type != 0 && type != kFile && type != kFolder)
        return "it is a link or a device";
    return RefusedName(entry.name);
}

/// Whether the local header says the same; finds what the entry covers.
std::string CheckLocal(PieceReader& file, long long tableAt, Record& record)
{
    const ZipEntry& entry = record.entry;
    const auto differs = "its local header differs from the table";
    std::string header(kLocalSize + entry.name.size(), '\0');
    if (!file.Read(record.first, header.data(), header.size()) || Get32(header.data()) != kLocalMark)
        return "its local header is not there";
    const char* const fields = header.data();
    if (Get16(fields + 6) != record.flags || Get16(fields + 8) != record.method
        || Get16(fields + 26) != entry.name.size() || header.compare(kLocalSize, header.npos, entry.name) != 0)
        return differs;
    // A writer that could not go back has left zeros and put the numbers behind the bytes.
    const bool isBehind = (record.flags & kSizesBehind) != 0;
    const std::pair<std::uint32_t, long long> numbers[] = {
        {Get32(fields + 14), entry.checksum}, {Get32(fields + 18), entry.packed}, {Get32(fields + 22), entry.unpacked}};
    for (const auto& [local, central] : numbers)
        if (local != central && !(isBehind && local == 0))
            return differs;
    std::string extra(Get16(fields + 28), '\0');
    const long long extraAt = record.first + static_cast<long long>(header.size());
    if (!extra.empty() && !file.Read(extraAt, extra.data(), extra.size()))
        return "its local header is not there";
    record.end = extraAt + static_cast<long long>(extra.size()) + entry.packed;
    return record.end > tableAt ? "it reaches into the table" : CheckExtra(extra, entry.name);
}

bool Overlap(std::vector<Record>& records)
{
    std::sort(records.begin(), records.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    return std::adjacent_find(records.begin(), records.end(), [](const auto& a, const auto& b) {
        return a.end > b.first;
    }) != records.end();
}

std::string ReadRecords(PieceReader& file, const Table& place, std::vector<Record>& records)
{
    // The bytes are there: the table ends where the file's last record begins.
    std::string table(static_cast<std::size_t>(place.size), '\0');
    if (!file.Read(place.offset, table.data(), table.size()))
        return "its table can't be read";
    std::size_t at = 0;
    std::unordered_set<std::string> names;
    for (std::size_t i = 0; i < place.count; ++i) {
        Record record;
        std::string reason = TakeRecord(table, at, record);
        if (reason.empty())
            reason = CheckRecord(record);
        if (reason.empty())
            reason = CheckLocal(file, place.offset, record);
        if (reason.empty() && !names.insert(record.entry.name).second)
            reason = "its name stands twice";
        if (!reason.empty())
            return "entry " + std::to_string(i) + ": " + reason;
        records.push_back(std::move(record));
    }
    return at == table.size() ? std::string() : "there is more in its table than entries";
}
}   // namespace

std::string ReadZipDirectory(PieceReader& file, std::vector<ZipEntry>& entries)
{
    Table table;
    std::vector<Record> records;
    std::string reason = ReadEnd(file, table);
    if (reason.empty())
        reason = ReadRecords(file, table, records);
    if (!reason.empty())
        return reason;
    entries.clear();
    entries.reserve(records.size());
    for (const Record& record : records)
        entries.push_back(record.entry);
    return Overlap(records) ? "its entries overlap" : std::string();
}

}   // namespace TvrContainers
