// The user's own units, as the configuration keeps them: one line of text each, whose meaning is its readers'.
#pragma once

#include "siblings/SiblingsApi.h"

constexpr int kCustomUnitTextSize = 256;   ///< characters of a record's buffer, end mark included

/// Copies the record at `index` to `text`, a zeroed buffer of kCustomUnitTextSize characters; a longer one is cut. The
/// buffer stays empty when there is no such record. `spare` may be null and is not used. 1, or 0 for no record.
TVLSIBLINGS_API int INIGetCustomUnit(int index, wchar_t* text, int* spare);

/// Stores a record in the user's file "CustomUnits.txt", written aside and renamed. An empty text takes the record away:
/// its place stays empty unless it is the last. 1; 0, with the file as it was, for an index out of range, a text with a
/// line break, and a file that can't be written, that another version made, or that is too long to be read.
TVLSIBLINGS_API int INISetCustomUnit(int index, wchar_t* text);

/// How many custom units there may be: indices are below.
TVLSIBLINGS_API int INIGetMaxNoOfCustomUnit();

namespace TvlConfig {

/// Records that are stored together. While it lives INISetCustomUnit only notes what it is told, with 0 for what it would not
/// store, and INIGetCustomUnit reads the file as it was at the beginning with what was noted since. The file changes in one
/// step at the end, or not at all when nobody commits. One at a time in a process.
class TVLSIBLINGS_API CustomUnitBatch {
public:
    /// Reads the file; one that can't be read takes no record, and is not written.
    CustomUnitBatch();
    ~CustomUnitBatch();
    CustomUnitBatch(const CustomUnitBatch&) = delete;
    CustomUnitBatch& operator=(const CustomUnitBatch&) = delete;
    /// Stores the records in one step; to be called once. False, with the file as it was, when it can't be written.
    bool Commit();
};

}   // namespace TvlConfig
