// tvl units list, add, remove and lint: the user's own units.
#pragma once

namespace CLI {
class App;
}

void AddCustomUnitsCommands(CLI::App& units);
