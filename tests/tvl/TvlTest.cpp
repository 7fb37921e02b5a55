// tvl as a process of its own: what it prints, and how it ends.
#include "ChildProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

namespace {

using nlohmann::json;
using testing::HasSubstr;

constexpr int kBadInput = 2;

ChildResult RunTvl(const std::vector<std::string>& arguments, const std::string& input = {})
{
    ChildResult result = RunProgram({"tvl", arguments, input, {}});
    // Text streams end lines in the system's way.
    for (std::string* const text : {&result.output, &result.errors})
        std::erase(*text, '\r');
    return result;
}

std::vector<json> Objects(const std::string& lines)
{
    std::vector<json> objects;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);)
        objects.push_back(json::parse(line));
    return objects;
}

TEST(Tvl, AnswersWithATextAndAnExitCode)
{
    struct Row {
        std::vector<std::string> arguments;
        int exitCode;
        std::string output;
    };
    const Row kRows[] = {
        {{"measure", "5in + 3mm", "--unit", "mm", "--locale", "en-US"}, 0, "130 mm\n"},
        {{"measure", "1234,5 mm", "--unit", "cm", "--locale", "de-DE"}, 0, "123,45 cm\n"},
        {{"measure", "5' 3 1/2\"", "-u", "31", "--form", "4", "--locale", "en-US"}, 0, "5' 3 1/2\"\n"},
        {{"measure", "1/3 m", "--decimals", "2", "--form", "0", "--locale", "en-US"}, 0, "333.33\n"},
        {{"measure", "90°", "-u", "11", "--form", "4", "--locale", "en-US"}, 0, "90°\n"},
        {{"convert", "1", "in", "mm"}, 0, "25.4\n"}, {{"convert", "-2", "in", "mm"}, 0, "-50.8\n"},
        {{"convert", "1e308", "km", "mm"}, kBadInput, ""}, {{"convert", "nan", "in", "mm"}, kBadInput, ""},
        {{"convert", "1e400", "in", "mm"}, kBadInput, ""}, {{"measure", "-5in", "--locale", "en-US"}, 0, "-127 mm\n"},
        {{"eval", "2*(3+4)", "--locale", "en-US"}, 0, "14.0\n"},
        {{"eval", "sin 90", "--degrees", "--locale", "en-US"}, 0, "1.0\n"}, {{"measure", "2*-3"}, kBadInput, ""},
        {{"measure", "1", "--unit", "furlong"}, kBadInput, ""}, {{"eval", "1", "--locale", "xx-YY"}, kBadInput, ""},
        {{"frobnicate"}, 106, ""},
        {{"convert", "1", "in"}, 106, ""},   // a missing argument, in the numbering of the option reader
    };
    for (const auto& [arguments, exitCode, output] : kRows) {
        const ChildResult result = RunTvl(arguments);
        const std::string line = testing::PrintToString(arguments);
        EXPECT_EQ(result.exitCode, exitCode) << line << result.errors;
        EXPECT_EQ(result.output, output) << line;
        EXPECT_EQ(result.errors.empty(), exitCode == 0) << line << result.errors;
    }
}

TEST(Tvl, NamesTheWordThatIsNoCommand)
{
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"bogus"}, {"language", "bogus"}})
        EXPECT_THAT(RunTvl(arguments).errors, HasSubstr("there is no command \"bogus\""));
    EXPECT_THAT(RunTvl({"language"}).errors, HasSubstr("A subcommand is required"));
}

TEST(Tvl, ReadsLinesAndGoesOnBehindABadOne)
{
    const ChildResult result = RunTvl({"measure", "--unit", "mm", "--locale", "en-US"}, "1cm\r\n3.5.2\n\n2 in\n");
    EXPECT_EQ(result.exitCode, kBadInput);
    EXPECT_EQ(result.output, "10 mm\n0 mm\n50.8 mm\n");
    EXPECT_THAT(result.errors, HasSubstr("3.5.2\n        ^ an operator is expected here"));

    const ChildResult objects = RunTvl({"measure", "--json", "--locale", "en-US"}, "1cm\n1 furlong\nsqrt(0-1)\n");
    EXPECT_EQ(objects.exitCode, kBadInput);
    const auto lines = Objects(objects.output);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], json::parse(R"({"input": "1cm", "unit": 2, "value": 10.0, "text": "10 mm"})"));
    EXPECT_EQ(lines[1].at("position"), 2);
    EXPECT_TRUE(lines[1].contains("error"));
    EXPECT_TRUE(lines[2].at("value").is_null());
}

TEST(Tvl, TakesAnyBytes)
{
    for (const std::string& bytes : {std::string("\xff\xfe\0\x80", 4), std::string(1 << 20, '('), std::string("\n\n\n"),
             std::string(100000, '1') + "mm"}) {
        const ChildResult result = RunTvl({"measure", "--json"}, bytes);
        EXPECT_TRUE(result.exitCode == 0 || result.exitCode == kBadInput) << result.exitCode;
        EXPECT_NO_THROW(Objects(result.output));
    }
    EXPECT_EQ(RunTvl({"measure", "--file", "no such file"}).exitCode, kBadInput);
}

TEST(Tvl, ListsUnitsWithFactors)
{
    const ChildResult result = RunTvl({"units", "--json"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    std::map<int, json> factors;
    for (const json& unit : Objects(result.output))
        factors[unit.at("id")] = unit.at("factor");
    EXPECT_EQ(factors.size(), 37u);
    EXPECT_TRUE(factors[17].is_null());
    for (const auto& [id, factor] : {std::pair(1, 0.0254), {14, 0.0018142857142857142}, {27, 4.84813681109536e-06}})
        EXPECT_EQ(factors[id], factor) << id;
}

}   // namespace
