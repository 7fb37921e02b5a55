// Work that takes time, for the list of tasks.
#pragma once

#include <thread>
#include <vector>

/// Threads that report to tasks, each task in a group of its own. Ends with its work: what runs is cancelled then.
class SampleWork {
public:
    enum class Kind {
        Short,     ///< a second, in one step
        Long,      ///< half a minute, in nested steps
        Failing,   ///< goes wrong half way
    };

    SampleWork() = default;
    SampleWork(const SampleWork&) = delete;
    SampleWork& operator=(const SampleWork&) = delete;
    ~SampleWork();

    void Start(Kind kind);
    /// Asks a group's task to end.
    static void Cancel(unsigned long long group);
    static void CancelAll();

private:
    std::vector<std::jthread> m_threads;
    unsigned long long m_lastGroup = 100;   // those of the gallery are above
};
