// Commands of the host application: what they print, and what they refuse.
#include "Commands.h"
#include "FakeLocale.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Result {
    int code;
    std::string out;
    std::string error;
};

/// Takes the place of a stream's buffer as long as it lives.
class Capture {
public:
    explicit Capture(std::ostream& stream) : m_stream(stream), m_before(stream.rdbuf(m_text.rdbuf())) { }
    ~Capture() { m_stream.rdbuf(m_before); }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    std::string Text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    std::ostream& m_stream;
    std::streambuf* m_before;
};

Result RunCommand(std::vector<std::string> arguments)
{
    CLI::App app;
    AddScaleCommand(app);
    AddSliderCommand(app);
    AddSmartCommand(app);
    std::reverse(arguments.begin(), arguments.end());   // taken from the back
    const Capture out(std::cout);
    const Capture error(std::cerr);
    int code = 0;
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::RuntimeError& end) {
        code = end.get_exit_code();
    }
    return {code, out.Text(), error.Text()};
}

TEST(MeasureCommands, RefuseBadInputWithAMessage)
{
    const std::vector<std::string> kRows[] = {
        {"scale", "50"},
        {"scale", "1:0"},
        {"scale", "-1:50"},
        {"scale", "1:inf"},
        {"scale", "1:nan"},
        {"scale", "1:50x"},
        {"scale", "1e-300:1e300"},
        {"scale", "1:50", "--world", "parsec"},
        {"scale", "1:50", "--page", "33"},
        {"smart", "", "--from", "1", "mm", "--to", "in"},
        {"smart", "5mm;abc", "--from", "1", "mm", "--to", "in"},
        {"smart", "5mm", "--from", "one", "mm", "--to", "in"},
        {"smart", "5mm", "--from", "nan", "mm", "--to", "in"},
        {"smart", "5mm", "--from", "1", "mm", "--to", "30"},
        {"slider", "round", "0", "1"},
        {"slider", "log", "5", "5"},
        {"slider", "log", "nan", "5"},
        {"slider", "linear", "-1e308", "1e308"},
        {"slider", "linear", "0", "1", "--range", "0"},
        {"slider", "linear", "0", "1", "--range", "inf"},
        {"slider", "linear", "0", "1", "--step", "0"},
        {"slider", "linear", "0", "1", "--step", "inf"},
        {"slider", "linear", "0", "1", "--step", "1e-10"},
        {"slider", "centred", "0", "1"},
        {"slider", "centred", "0", "1", "--centre", "1"},
    };
    for (const auto& arguments : kRows) {
        const Result result = RunCommand(arguments);
        EXPECT_EQ(result.code, kBadInput) << testing::PrintToString(arguments);
        EXPECT_EQ(result.out, "") << testing::PrintToString(arguments);
        EXPECT_THAT(result.error, testing::StartsWith("tvl: ")) << testing::PrintToString(arguments);
    }
}

TEST(MeasureCommands, PrintObjectsForOtherPrograms)
{
    struct Row {
        std::vector<std::string> arguments;
        const char* last;
    };
    const Row kRows[] = {
        {{"scale", "1:50", "--world", "m", "--page", "cm", "--json"},
            R"({"scale":50.0,"page":2.0,"pageUnit":5,"world":1.0,"worldUnit":9,"metric":true,)"
            R"("label":"2.0 centimeters : 1.0 meters"})"},
        {{"scale", "--json"},
            R"({"scale":0.01,"page":100.0,"pageUnit":0,"world":1.0,"worldUnit":0,"metric":true,"label":"100:1"})"},
        {{"smart", "8.25in;210mm", "--from", "210", "mm", "--to", "in", "--json"},
            R"({"value":210.0,"from":2,"to":1,"result":8.25})"},
        {{"smart", "1,6cc;7mm", "--from", "1.5", "cc", "--to", "mm", "--json"},
            R"({"value":1.5,"from":12,"to":2,"result":7.0})"},
        {{"slider", "exp", "-10", "-5", "--json"}, R"({"position":100.0,"value":-5.0})"},
        {{"slider", "centred", "0", "100", "--centre", "20", "--range", "10", "--json"},
            R"({"position":10.0,"value":100.0})"},
    };
    const FakeLocale english;
    for (const auto& [arguments, last] : kRows) {
        const Result result = RunCommand(arguments);
        EXPECT_EQ(result.code, 0);
        EXPECT_THAT(result.out, testing::EndsWith(std::string(last) + '\n'));
    }
}

}   // namespace
