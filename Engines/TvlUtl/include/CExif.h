// The Exif block of an image: read into a list of tags, shown as text, and patched in place.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Stream.h"

#include <utility>
#include <vector>

/// Result of CExifTag::ReadTag.
enum eFileRead : int {
    eFileReadError = -1,    ///< the 12 bytes of the entry could not be read
    eFileReadOk = 0,        ///< the tag is read
    eFileReadNoValue = 1,   ///< the value could not be allocated or read
    eFileReadSkipped = 2,   ///< skipped on purpose: a maker note, a type without a size, no value or one above 64 KiB
};

/// One directory entry with its value. A new tag is all zeroes.
/// Functions that return int give 1 for success and 0 for failure.
class TVLUTL_API CExifTag {
public:
    /// All zeroes.
    CExifTag() = default;
    /// Frees `data`.
    ~CExifTag();
    /// Copies share `data`, which only one of them may free: take it away from the others before they end.
    CExifTag(const CExifTag&) = default;
    /// Copies the fields and shares `data`; bytes that the target held are not freed.
    CExifTag& operator=(const CExifTag&) = default;

    /// Reads the entry at the stream's position, which then stands behind it. A value of 5 bytes or more is read from
    /// its offset, which counts from the start of the stream. The bytes of an earlier value are freed.
    /// @param bigEndian not 0 when the block's byte order is "MM"
    eFileRead ReadTag(TvlUtils::Stream stream, int bigEndian);

    /// Memory for `data` of a tag that is filled by other means; null when there is none.
    static unsigned char* AllocateData(unsigned int size);

    unsigned int GetID() { return id; }   ///< 16-bit number of the directory entry, such as 274 for the orientation
    unsigned int GetValueType() { return type; }   ///< number of the items' type; see `type`
    /// Number of items, not of bytes.
    unsigned int GetValueCount() { return count; }
    /// Bytes of one item: 1 for types 1, 2 and 7, 2 for type 3, 4 for types 4 and 9, 8 for types 5 and 10, else 0.
    unsigned int GetDataItemSize() const;
    /// Item size times count, in bytes; UINT_MAX when it does not fit.
    unsigned int GetBufferSize() const;
    /// Copies item `index`. 0 when `outSize` is below the item size or there is no such item.
    int GetSingleValue(unsigned int index, void* out, unsigned int outSize);
    /// Copies all items. 0 when `outSize` is below the buffer size.
    int GetAllValues(void* out, unsigned int outSize);
    /// The character code that 8 bytes before a text name: 11 "ASCII", 12 "UNICODE" (both padded with zero bytes), 13
    /// anything else or null.
    int GetByteCode(unsigned char* prefix);

    /// The tag's name in the user's language. 0, with `label` untouched, for a tag without one. The tags 37377 to 37386
    /// have none.
    int GetDisplayLabel(TvlStringT<wchar_t>& label);
    /// The value in readable form. 0 for a tag without items (`value` is untouched then), for a user comment (37510) in
    /// another character code than ASCII and UTF-16 or without text, and for a maker note (37500) above 100 bytes
    /// (`value` is empty then). A value too short for its tag gives a text that says so, and 1.
    int GetDisplayValue(TvlStringT<wchar_t>& value);

    // Callers outside rely on these fields and their order.
    unsigned int id = 0;             // the tag's number
    unsigned int type = 0;           // 1 bytes, 2 text, 3 and 4 unsigned, 5 unsigned rationals, 7 undefined, 9 signed,
                                     // 10 signed rationals
    unsigned int count = 0;          // items
    unsigned char* data = nullptr;   // owned, from AllocateData: `count` items in host byte order

private:
    friend class CExif;

    eFileRead ReadEntry(const struct ExifDirectoryEntry& entry, struct ExifReading& reading);
    void AppendItems(TvlStringT<wchar_t>& value) const;
    int GetUserCommentDisplayValue(TvlStringT<wchar_t>& value) const;
    int GetMakerNoteDisplayValue(TvlStringT<wchar_t>& value) const;

    TvlStringT<wchar_t> GetExposureProgramDisplayValue() const;
    TvlStringT<wchar_t> GetExifVersionDisplayValue() const;
    TvlStringT<wchar_t> GetComponentsConfigurationDisplayValue() const;
    TvlStringT<wchar_t> GetFlashPixVersionDisplayValue() const;
    TvlStringT<wchar_t> GetColorSpaceDisplayValue() const;
    TvlStringT<wchar_t> GetFocalPlaneResolutionUnitDisplayValue() const;
    TvlStringT<wchar_t> GetSensingMethodDisplayValue() const;
    TvlStringT<wchar_t> GetFileSourceDisplayValue() const;
    TvlStringT<wchar_t> GetSceneTypeDisplayValue() const;
    TvlStringT<wchar_t> GetCFAPatternDisplayValue() const;
    TvlStringT<wchar_t> GetCFAPatternColor(unsigned char colour) const;
    TvlStringT<wchar_t> GetSingleRationalDisplayValue(unsigned int index) const;
};

/// The tags of the first directory of an Exif block and of the Exif directory that its tag 34665 points to. Directories
/// of thumbnails and of GPS data are not read. Functions that return int give 1 for success and 0 for failure.
class TVLUTL_API CExif {
public:
    /// Without tags and without a file.
    CExif() = default;
    /// Deletes the tags, and the file that SetTempFileName named.
    ~CExif();
    /// Copies share tags and temporary file with their source, and each would delete them: of all copies but one the
    /// destructor must not run.
    CExif(const CExif&) = default;
    /// Shares tags and temporary file in the same way; the tags that the target held are not deleted.
    CExif& operator=(const CExif&) = default;

    /// Appends the tags of the block that begins at the stream's position, which must be its start. Values outside the
    /// stream, and those beyond 64 MiB for all tags of this object together, are left away. A broken structure, or a
    /// directory that leads back to an earlier one, ends the call with 0; the tags read so far stay.
    int ParseData(TvlUtils::Stream stream);
    /// Overwrites the 4 bytes of the value field of the first tag `tagId` in the stream, whose block begins at the
    /// stream's position: with `value` in the block's byte order and zeroes behind it for the types 1, 3 and 4, with
    /// zeroes for all others, also when the field holds the offset of the value. Touches no other byte and none of this
    /// object's tags. 0 when there is no such tag (34665 is never found) or the write fails.
    int ReplaceData(TvlUtils::Stream stream, int tagId, int value);

    /// The tag in reading order, owned by this object; null when `index` is out of range.
    CExifTag* GetAt(int index);
    /// The first tag with that id, owned by this object, or null.
    CExifTag* FindTag(unsigned int id);

    /// Horizontal resolution (tag 282) in pixels per `unit`, which is tag 296: 2 inch, 3 centimetre. `unit` is stored
    /// even when the result is 0, and left alone when there is no tag 296 or no tag 282.
    int GetHRes(double& resolution, unsigned short& unit);
    /// Vertical resolution (tag 283), as GetHRes.
    int GetVRes(double& resolution, unsigned short& unit);
    /// Orientation (tag 274), 1 to 8 in a sound file. A value of one byte sets only the low byte of `orientation`.
    int GetOrientation(short& orientation);

    /// Names a file that the destructor deletes; empty for none.
    void SetTempFileName(TvlStringT<wchar_t> name) { m_tempFileName = std::move(name); }
    /// The name itself, not a copy.
    TvlStringT<wchar_t>& GetTempFileNameW() { return m_tempFileName; }

private:
    int GetRes(unsigned int id, double& resolution, unsigned short& unit);

    TvlStringT<wchar_t> m_tempFileName;
    std::vector<CExifTag*> tags;   // owned, in reading order
};
