// Work on many things by several threads, with the results taken in order.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

/// Calls `work(i)` for each i below `count` on up to `threads` threads, and `take(i, result)` on the calling thread in the
/// order of i. `work` must not throw. Results wait for their turn: threads run no more than a few things ahead.
template <class Work, class Take>
void DoInOrder(std::size_t count, std::size_t threads, Work work, Take take)
{
    using Result = decltype(work(std::size_t{}));
    constexpr std::size_t kAhead = 8;   // per thread

    std::mutex lock;
    std::condition_variable changed;
    std::map<std::size_t, Result> done;
    std::size_t next = 0;    // to be started
    std::size_t taken = 0;   // in order

    const auto run = [&] {
        std::unique_lock hold(lock);
        while (true) {
            changed.wait(hold, [&] { return next == count || next < taken + kAhead * threads; });
            if (next == count)
                return;
            const std::size_t i = next++;
            hold.unlock();
            Result result = work(i);
            hold.lock();
            done.emplace(i, std::move(result));
            changed.notify_all();
        }
    };
    std::vector<std::jthread> workers;
    for (std::size_t i = 0; i < std::min(threads, count); ++i)
        workers.emplace_back(run);

    std::unique_lock hold(lock);
    while (taken < count) {
        changed.wait(hold, [&] { return done.contains(taken); });
        auto result = done.extract(taken);
        hold.unlock();
        take(result.key(), std::move(result.mapped()));
        hold.lock();
        ++taken;
        changed.notify_all();
    }
}
