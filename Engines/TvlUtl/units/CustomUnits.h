// Units that users and deployments define, with ids from 42 on.
#pragma once

#include "CustomUnitRecord.h"

/// The unit of an id of which UNITIsValidCustomUnit answers 1. One place past the last unit, which that test admits,
/// there is a unit of zeros.
const CustomUnitRecord& CustomUnit(int id);

/// Tenths of a micron, by way of the base unit, which may be a custom one too; 0.0 for an id that is none, and for bases
/// that lead round in a circle: no honest chain of them is longer than there are units.
double CustomUnitToBase(int id, double resolution, double value);
/// The inverse.
double BaseToCustomUnit(int id, double resolution, double value);

/// Built-in ids, then the custom ones, then -1; null as long as no units were read.
const int* CustomUnitArray();
