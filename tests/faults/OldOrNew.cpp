#include "OldOrNew.h"

#include "Tally.h"

#include <gtest/gtest.h>

void ExpectOldOrNew(const std::string& found, const std::string& old, const std::string& next, bool isDone)
{
    const bool isTorn = found != old && found != next;
    const bool isLost = !isTorn && isDone && found != next;
    EXPECT_FALSE(isTorn) << "neither the old state nor the new one:\n" << found;
    EXPECT_FALSE(isLost) << "told to be done, and not there; instead:\n" << found;
    Tally::Get().Add("torn files", isTorn);
    Tally::Get().Add("acknowledged entries lost", isLost);
}

void ExpectNoLeftovers(std::size_t found, std::size_t sound, const std::string& names)
{
    EXPECT_LE(found, sound) << "leftovers:\n" << names;
    Tally::Get().Add("leftovers after the next success", found > sound ? static_cast<long long>(found - sound) : 0);
}
