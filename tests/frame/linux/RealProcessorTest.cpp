// The processor that runs the tests, beside what the kernel says of it.
#include "CpuID.h"
#include "ProcessorIdentification.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

namespace {

/// The lines of the first processor by their names, without the blanks around both.
std::map<std::string, std::string> ProcessorInformation()
{
    const auto trimmed = [](const std::string& text) {
        const auto first = text.find_first_not_of(" \t");
        return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t") + 1 - first);
    };
    std::map<std::string, std::string> information;
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line) && !line.empty();) {
        const auto colon = line.find(':');
        if (colon != std::string::npos)
            information[trimmed(line.substr(0, colon))] = trimmed(line.substr(colon + 1));
    }
    return information;
}

TEST(CpuID, AgreesWithTheKernel)
{
    auto information = ProcessorInformation();
    ASSERT_FALSE(information.empty());
    std::istringstream words(information["flags"]);
    std::set<std::string> flags;
    for (std::string word; words >> word;)
        flags.insert(word);
    const CpuID& cpu = CpuID::GetInstance();
    EXPECT_EQ(cpu.CheckSSSE3Support(), flags.contains("ssse3"));
    EXPECT_EQ(cpu.CheckAVXSupport(), flags.contains("avx"));
    EXPECT_EQ(cpu.CheckAVX2Support(), flags.contains("avx2"));
    EXPECT_EQ(cpu.CheckPOPCNTSupport(), flags.contains("popcnt"));
    EXPECT_EQ(ProcessorIdentification(Ports::Processor::Get()).vendor, information["vendor_id"]);
}

}   // namespace
