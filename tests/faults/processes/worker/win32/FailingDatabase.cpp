#include "FailingDatabase.h"

// The system keeps the registry.
void WatchDatabase(int, DatabaseFault) { }
int CountDatabaseOperations() { return 0; }
bool HasDatabaseFailed() { return false; }
