// The lock between threads, and callables.
#include "siblings/TvlUtils/ThreadLock.h"
#include "siblings/TvlUtils/Delegate.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

TEST(ThreadLock, AdmitsOneWriterAndItsOwnerAgain)
{
    TvlUtils::ThreadLock lock;
    int count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < 1000; ++round) {
                const TvlUtils::WriteLock write(lock);
                const TvlUtils::ReadLock read(lock);
                ++count;
            }
        });
    for (auto& thread : threads)
        thread.join();
    const TvlUtils::ReadLock hold(lock);
    EXPECT_EQ(count, 8000);
}

struct Adder {
    int Add(int value) { return sum += value; }
    int sum = 0;
};
int Negative(int value) { return -value; }

TEST(Delegate, CallsMembersAndFunctionsAndEqualsByBothWords)
{
    using Sum = TvlUtils::Delegate<int (*)(int)>;
    Adder one;
    Adder two;
    const Sum sum = Sum::To<&Adder::Add>(&one);
    EXPECT_EQ(sum(3), 3);
    EXPECT_EQ(sum(4), 7);
    EXPECT_EQ(Sum::To<&Negative>()(5), -5);
    EXPECT_EQ(sum, Sum::To<&Adder::Add>(&one));
    EXPECT_FALSE(sum == Sum::To<&Adder::Add>(&two));
    EXPECT_FALSE(sum == Sum::To<&Negative>());
    const TvlUtils::Delegate<int(int)> named = sum;
    EXPECT_EQ(named(1), 8);
}

}   // namespace
