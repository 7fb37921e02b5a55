// How fault_worker ends, beside 0 and kFileStopExitCode. No exit code of a process that crashes, or that a sanitizer ends.
#pragma once

inline constexpr int kOutOfMemory = 40;
inline constexpr int kRefused = 41;   // the work has told of a failure, or the arguments mean nothing
