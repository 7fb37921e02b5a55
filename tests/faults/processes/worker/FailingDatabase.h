// The database that the registry of the linux target is kept in, of which one write fails or is the last one.
#pragma once

/// What happens in a write, a flush, a truncation or a removal of the database's files.
enum class DatabaseFault : int {
    Fail = 1,         ///< it fails
    FailOnward = 2,   ///< so do all behind it
    Full = 3,         ///< there is no space
    Stop = 4,         ///< the process ends in it, half written
};

/// From now on the operations of databases that are opened are counted, and one of them meets a fault. Before the first use
/// of the registry. On the other target the system keeps the registry: nothing is counted there.
/// @param point the operation that meets it, counted from 1; 0 for none
void WatchDatabase(int point, DatabaseFault fault);
/// Operations so far.
int CountDatabaseOperations();
/// Whether one of them has met the fault.
bool HasDatabaseFailed();
