// The processor that runs the tests, beside what the kernel says of it.
#include "CpuID.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

namespace {

/// The flags of the first processor.
std::set<std::string> KernelFlags()
{
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("flags")) {
            std::istringstream words(line.substr(line.find(':') + 1));
            return {std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()};
        }
    return {};
}

TEST(CpuID, AgreesWithTheKernel)
{
    const auto flags = KernelFlags();
    const CpuID& cpu = CpuID::GetInstance();
    EXPECT_EQ(cpu.CheckSSSE3Support(), flags.contains("ssse3"));
    EXPECT_EQ(cpu.CheckAVXSupport(), flags.contains("avx"));
    EXPECT_EQ(cpu.CheckAVX2Support(), flags.contains("avx2"));
    EXPECT_EQ(cpu.CheckPOPCNTSupport(), flags.contains("popcnt"));
}

}   // namespace
