#include "AllHeaders.h"

#include <gtest/gtest.h>

#include <string>

TEST(Version, OfTheLoadedLibraryIsThatOfTheHeader)
{
    EXPECT_STREQ(TvlUtlVersion(), TVLUTL_VERSION);
    EXPECT_EQ(std::to_string(TVLUTL_VERSION_MAJOR) + "." + std::to_string(TVLUTL_VERSION_MINOR) + "."
            + std::to_string(TVLUTL_VERSION_PATCH),
        TVLUTL_VERSION);
}
