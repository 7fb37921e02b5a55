#include "FailingDatabase.h"

// The system keeps the registry.
void FailDatabase(int, DatabaseFault) { }
