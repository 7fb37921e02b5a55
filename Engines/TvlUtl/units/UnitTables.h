// The built-in measures and displays.
#pragma once

#include "WUnit.h"

#include <span>

/// One built-in measure.
struct DefinitionRow {
    int id;
    int decimals;
    double increments[3];   // small, medium, large
    WUntiDef* (*make)(const DefinitionRow& row);
    const wchar_t* keys[4];   // first, second and third name, symbol; empty for none
    double factor;            // metres per unit, radians for angles
};

/// One built-in display.
struct DisplayRow {
    int id;
    WUnitCollection* (*make)();
    int definitions[3];
    int count;
    int separatorKind;    // 1 between picas and points, 0 for all others
    int forcedDecimals;   // -1 for none
};

const DefinitionRow* FindDefinitionRow(int id);
const DisplayRow* FindDisplayRow(int id);
/// The order in which a WUnit takes its displays by default, ended by -1.
std::span<const int> DefaultDisplays();
