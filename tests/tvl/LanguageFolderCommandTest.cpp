// tvl language check and pseudo: what a translator sees.
#include "ChildProcess.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

ChildResult Language(const std::string& command, const std::filesystem::path& folder)
{
    return RunProgram({"tvl", {"language", command, folder.string()}, {}, {}});
}

TEST(LanguageFolderCommand, WritesALanguageAndTellsWhatIsWrongWithIt)
{
    const ScratchFolder scratch;
    const auto folder = scratch.Path() / "XX";
    EXPECT_EQ(Language("pseudo", folder).exitCode, 0);
    const ChildResult whole = Language("check", folder);
    EXPECT_EQ(whole.exitCode, 0) << whole.output;
    EXPECT_THAT(whole.output, HasSubstr("all as they should be"));

    std::filesystem::remove(folder / "Data" / "info.json");
    std::ofstream(folder / "Data" / "Texts" / "progress.json") << R"({"version": 1, "texts": {"key": ""}})";
    const ChildResult broken = Language("check", folder);
    EXPECT_EQ(broken.exitCode, 2);
    EXPECT_THAT(broken.output, HasSubstr("info.json: it can't be read"));
    EXPECT_THAT(broken.output, HasSubstr("the text for \"Running tasks\" is missing"));
    EXPECT_THAT(broken.output, HasSubstr("has no English text"));
    EXPECT_THAT(broken.errors, HasSubstr("3 faults in"));

    EXPECT_EQ(Language("check", scratch.Path()).exitCode, 2);
    EXPECT_EQ(Language("pseudo", folder / "Data" / "Texts" / "sizes.json").exitCode, 2);
}
}   // namespace
