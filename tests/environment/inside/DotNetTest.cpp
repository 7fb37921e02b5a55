// Versions of the managed runtime.
#include "MemoryRegistry.h"
#include "RuntimeVersion.h"
#include "WUTLRegistry.h"
#include "windows/ManagedRuntimes.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace {
using TvlUtl::ParseRuntimeVersion;
using TvlUtl::RuntimeVersion;

TEST(RuntimeVersion, ReadsThreeNumbers)
{
    struct Row {
        const wchar_t* text;
        RuntimeVersion version;
    };
    constexpr Row kRows[] = {
        {L"v4.0.30319", {4, 0, 30319}},
        {L"4.8.4084.1", {4, 8, 4084}},
        {L"4", {4, 0, 0}},
        {L"", {0, 0, 0}},
        {L"v", {0, 0, 0}},
        {L"..7", {0, 0, 7}},
        {L"4.", {4, 0, 0}},
        {L"vv4", {'v' * 10 - '0' * 10 + 4, 0, 0}},   // one "v" alone is passed over
        {L"4.0a", {4, 'a' - '0', 0}},
        {L"4.2:", {4, 30, 0}},
        {L"4294967295.4294967296.4294967297", {4294967295u, 0, 1}},
        {L"1.2.3.-", {1, 2, 3}},
        {L"1.\uFFFF", {1, 0xFFFF - '0', 0}},
    };
    for (const auto& [text, version] : kRows)
        EXPECT_EQ(ParseRuntimeVersion(text), version) << text;
    for (const wchar_t* const text : {L"-1", L"4. 0", L"4.0.3/", L"+", L"1.2.3\n"})
        EXPECT_THROW(ParseRuntimeVersion(text), std::invalid_argument) << text;
    try {
        ParseRuntimeVersion(L"-");
    } catch (const std::invalid_argument& failure) {
        EXPECT_STREQ(failure.what(), "Invalid digit encountered");
    }
}

struct FakeRuntimes : Ports::ManagedRuntimes {
    FakeRuntimes() { SetForTests(this); }
    FakeRuntimes(const FakeRuntimes&) = delete;
    FakeRuntimes& operator=(const FakeRuntimes&) = delete;
    ~FakeRuntimes() override { SetForTests(nullptr); }
    std::optional<std::vector<std::wstring>> Installed() const override { return versions; }

    std::optional<std::vector<std::wstring>> versions;
};

TEST(DotNet, WantsARuntimeAndTheFramework)
{
    struct Row {
        std::optional<std::vector<std::wstring>> runtimes;
        const wchar_t* framework;   // null when it is not installed
        bool answer;
    };
    const Row rows[] = {
        {std::nullopt, L"4.8.1", false},
        {{{}}, L"4.8.1", false},
        {{{L"v2.0.50727"}}, L"4.8.1", false},
        {{{L"v4.0.30318"}}, L"4.8.1", false},
        {{{L"v2.0.50727", L"v4.0.30319"}}, L"4.7", true},
        {{{L"v4.0.30319"}}, L"4.6.9999", false},
        {{{L"v4.0.30319"}}, L"5", true},
        {{{L"v4.0.30319"}}, L"4.-7", false},
        {{{L"v-", L"v4.0.30319"}}, L"4.8", false},
        {{{L"v4.0.30319"}}, nullptr, false},
    };
    FakeRuntimes fake;
    for (const auto& [runtimes, framework, answer] : rows) {
        const MemoryRegistry registry;
        fake.versions = runtimes;
        if (framework) {
            WUTLRegistry key(L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\NET Framework Setup\\NDP\\v4\\Full",
                WUTLRegistry::kWriteAccess, 1);
            EXPECT_EQ(key.SetValue(L"Install", ULONG{1}), 0);
            EXPECT_EQ(key.SetValue(L"Version", framework), 0);
        }
        EXPECT_EQ(TvlUtl::DetectDotNet(), answer) << (framework ? framework : L"none");
    }
}

TEST(DotNet, TakesWhatTheSystemEnumerates)
{
    for (const std::wstring& version : Ports::ManagedRuntimes::Get().Installed().value_or(std::vector<std::wstring>()))
        EXPECT_GT(ParseRuntimeVersion(version), RuntimeVersion()) << version;
}

}   // namespace
