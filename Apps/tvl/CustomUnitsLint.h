// What is wrong with the user's own units.
#pragma once

#include "StoredUnits.h"

#include <string>
#include <vector>

/// Problems in the order of the lines, each with its record's number from 1 on.
std::vector<std::string> FindUnitProblems(const std::vector<StoredUnit>& units);
