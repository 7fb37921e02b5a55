// The system's way of starting a program.
#pragma once

#include "ChildProcess.h"

/// Files that take the place of the standard streams.
struct ChildStreams {
    std::filesystem::path input;
    std::filesystem::path output;
    std::filesystem::path errors;
};

/// Starts a program, waits for its end, which it brings about when it is to be killed, and returns its exit code; 128 and the signal's number when a signal ended it.
int StartChild(const std::filesystem::path& program, const ChildProcess& child, const ChildStreams& streams);
