// tvl session: an application's life from its start to its end.
#pragma once

namespace CLI {
class App;
}

/// Adds the command with its options.
void AddSessionCommand(CLI::App& app);
