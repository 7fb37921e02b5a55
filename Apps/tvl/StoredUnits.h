// Custom units as the user's file has them, also those that the library passes over.
#pragma once

#include "CustomUnitRecord.h"
#include "siblings/TvlConfig/CustomUnits.h"

#include <string>
#include <vector>

/// One line of the file.
struct StoredUnit {
    TvlString text;
    std::optional<CustomUnitRecord> record;   // none for a line that is passed over
    int id = -1;                              // -1 for what is no unit
};

/// All lines, in order.
std::vector<StoredUnit> ReadStoredUnits();
/// Makes these texts the lines of the file, in one step; ends the command with a message when they can't be written. The batch
/// has begun before the lines were read: what they were made from is what they replace.
void WriteStoredUnits(TvlConfig::CustomUnitBatch& batch, const std::vector<TvlString>& texts);

/// The id of a custom unit by id or by one of its names; -1 for none.
int FindStoredUnit(const std::vector<StoredUnit>& units, const std::string& text);
/// The id of a custom unit or of a built-in one that is a plain measure; ends the command with a message for any other.
int MeasureUnitId(const std::vector<StoredUnit>& units, const std::string& text);

/// Ends the command with a message on a text that can't be used.
[[noreturn]] void RefuseText(const std::string& text, const std::string& problem);
