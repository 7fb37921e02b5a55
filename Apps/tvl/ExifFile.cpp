#include "ExifFile.h"

#include "ExifLocator.h"
#include "TerminalText.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

using nlohmann::ordered_json;
using TvlUtils::Stream;
using TvlUtils::StreamAccess;
using TvlUtils::SystemIO::FromFilePath;

namespace {
constexpr unsigned kOrientation = 274;

/// A file's error, in one line; null for a found block.
const char* ErrorOf(ExifSearch search)
{
    switch (search) {
    case ExifSearch::UnknownFormat:
        return "not a JPEG, TIFF, PNG or WebP file";
    case ExifSearch::Damaged:
        return "damaged before its Exif block";
    default:
        return nullptr;
    }
}

/// A stream over a place in a file; without a source when there is none.
Stream OpenFile(const std::filesystem::path& path, StreamAccess access, const ExifPlace& place)
{
    return Stream::OpenFile(FromFilePath(path), access, place.offset, place.size);
}

/// Opens a file, finds its block and reads it.
struct OpenedFile {
    OpenedFile(const std::filesystem::path& path, StreamAccess wanted) : access(wanted)
    {
        file.path = path;
        stream = OpenFile(path, access, {});
        if (!stream) {
            file.error = access == StreamAccess::Read ? "can't be opened" : "can't be opened for writing";
            return;
        }
        place = LocateExif(stream);
        file.isImage = place.search != ExifSearch::UnknownFormat;
        file.hasBlock = place.search == ExifSearch::Found;
        if (const char* const error = ErrorOf(place.search))
            file.error = error;
        else if (file.hasBlock && !file.exif->ParseData(Block()))
            file.error = "damaged Exif block";
    }

    /// A stream over the block alone.
    Stream Block() const { return OpenFile(file.path, access, place); }
    bool RenewCheckSum() const
    {
        // A stream of its own: the one that found the block may still hold bytes from before the change.
        Stream changed = OpenFile(file.path, access, {});
        return ::RenewCheckSum(changed, place);
    }

    StreamAccess access;
    ExifFile file;
    Stream stream;   // over the whole file
    ExifPlace place;
};

/// The value of a tag that holds one number of a type that can be patched; empty for all others.
std::optional<unsigned> PatchableNumber(CExifTag* tag)
{
    const bool isNumber = tag && tag->GetValueCount() == 1
        && (tag->GetValueType() == 1 || tag->GetValueType() == 3 || tag->GetValueType() == 4);
    if (!isNumber)
        return std::nullopt;
    unsigned value = 0;
    tag->GetSingleValue(0, &value, sizeof value);
    return value;
}

/// One line: what could move a terminal's cursor is written as its number.
std::string Printable(const TvlString& text)
{
    TvlString line;
    for (const wchar_t c : text.Std()) {
        if (c < 0x20 || (c >= 0x7F && c < 0xA0))
            line += TvlString().Format(L"\\x%02x", static_cast<unsigned>(c));
        else
            line += c;
    }
    return TvlPlatform::ToUtf8(line);
}

TvlString Shortened(const TvlString& text)
{
    constexpr int kMostShown = 160;
    return text.GetLength() > kMostShown ? text.Left(kMostShown) + L"\u2026" : text;
}

template <class Number>
Number Item(CExifTag& tag, unsigned index)
{
    Number item{};
    tag.GetSingleValue(index, &item, sizeof item);
    return item;
}

template <class Number>
ordered_json Numbers(CExifTag& tag)
{
    ordered_json items = ordered_json::array();
    for (unsigned i = 0; i < tag.GetValueCount(); ++i)
        items.push_back(Item<Number>(tag, i));
    return items;
}

ordered_json TextValue(CExifTag& tag)
{
    std::string text(tag.GetBufferSize(), '\0');
    tag.GetAllValues(text.data(), tag.GetBufferSize());
    return text.substr(0, text.find('\0'));
}

ordered_json HexDigits(CExifTag& tag)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::vector<unsigned char> bytes(tag.GetBufferSize());
    tag.GetAllValues(bytes.data(), tag.GetBufferSize());
    std::string digits;
    for (const unsigned char byte : bytes)
        digits += {kDigits[byte >> 4], kDigits[byte & 15]};
    return digits;
}

/// The items as a machine wants them, by value type.
ordered_json ValueOf(CExifTag& tag)
{
    using Form = ordered_json (*)(CExifTag&);
    static constexpr Form kForms[] = {nullptr, Numbers<std::uint8_t>, TextValue, Numbers<std::uint16_t>,
        Numbers<std::uint32_t>, Numbers<std::array<std::uint32_t, 2>>, nullptr, HexDigits, nullptr,
        Numbers<std::int32_t>, Numbers<std::array<std::int32_t, 2>>};
    return kForms[tag.GetValueType()](tag);
}
}   // namespace

ExifFile ReadExifFile(const std::filesystem::path& path) { return OpenedFile(path, StreamAccess::Read).file; }

ExifFile SetExifOrientation(const std::filesystem::path& path, int orientation)
{
    OpenedFile opened(path, StreamAccess::ReadWrite);
    ExifFile& file = opened.file;
    if (!file.error.empty())
        return std::move(file);
    const std::optional<unsigned> present = PatchableNumber(file.exif->FindTag(kOrientation));
    if (!present)
        file.error = "no orientation to change";
    else if (present != static_cast<unsigned>(orientation)
        && (!file.exif->ReplaceData(opened.Block(), kOrientation, orientation) || !opened.RenewCheckSum()))
        file.error = "can't be written";
    return std::move(file);
}

std::string ExifFileName(const std::filesystem::path& path) { return Printable(FromFilePath(path)); }

std::string ExifText(const ExifFile& file)
{
    constexpr std::size_t kLabelWidth = 40;
    std::string out = ExifFileName(file.path) + (file.hasBlock ? "\n" : ": no Exif block\n");
    TvlString text;
    for (int i = 0; CExifTag* tag = file.exif->GetAt(i); ++i) {
        TvlString label = L"-";
        tag->GetDisplayLabel(label);
        text.Empty();
        tag->GetDisplayValue(text);
        label.Format(L"  %5u  %s  ", tag->GetID(), PaddedToColumns(label.Std(), kLabelWidth));
        out += TvlPlatform::ToUtf8(label) + Printable(Shortened(text)) + '\n';
    }
    return out;
}

std::string ExifJson(const ExifFile& file)
{
    ordered_json object{{"file", TvlPlatform::ToUtf8(FromFilePath(file.path))}, {"tags", ordered_json::array()}};
    TvlString text;
    for (int i = 0; CExifTag* tag = file.exif->GetAt(i); ++i) {
        ordered_json entry{{"id", tag->GetID()}, {"type", tag->GetValueType()}, {"count", tag->GetValueCount()}};
        if (tag->GetDisplayLabel(text))
            entry["label"] = TvlPlatform::ToUtf8(text);
        text.Empty();
        tag->GetDisplayValue(text);
        entry["text"] = TvlPlatform::ToUtf8(text);
        entry["value"] = ValueOf(*tag);
        object["tags"].push_back(std::move(entry));
    }
    if (!file.error.empty())
        object["error"] = file.error;
    // Texts of an image may hold any bytes.
    return object.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}
