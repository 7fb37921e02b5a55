// tvl session: an application's life in a folder of its own, once, again, and after a bad end.
#include "ChildProcess.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::HasSubstr;

constexpr int kFailedStep = 1;
constexpr int kBadInput = 2;

class Session : public testing::Test {
protected:
    ~Session() override
    {
        for (const std::string& key : m_keys)
            RunProgram({"tvl", {"registry", "delete", key}, {}, {}});
    }

    fs::path Folder() const { return m_folder.Path() / "session"; }
    /// What stands for the user's own files, which no session touches.
    fs::path User() const { return m_folder.Path() / "user"; }

    ChildProcess Command(std::vector<std::string> options) const
    {
        options.insert(options.begin(), "session");
        return {"tvl", options, {},
            {{"TVL_USER_DIR", User().string()}, {"TVL_REGISTRY", (m_folder.Path() / "user.db").string()},
                {"DO_NOT_TRACK", "0"}}};
    }
    ChildResult Run(std::vector<std::string> options) const { return RunProgram(Command(std::move(options))); }
    /// A session in the folder; its result, which `exitCode` goes with.
    json Play(int exitCode, const std::vector<std::string>& options = {}) const
    {
        std::vector<std::string> all = {"--json", "--folder", Folder().string()};
        all.insert(all.end(), options.begin(), options.end());
        const ChildResult result = Run(all);
        EXPECT_EQ(result.exitCode, exitCode) << result.output << result.errors;
        json played = Read(result);
        EXPECT_EQ(played.value("succeeded", exitCode != 0), exitCode == 0);
        return played;
    }

    /// Reads what a session has printed. Where its registry is no file, the key goes with the test.
    json Read(const ChildResult& result) const
    {
        json played = json::parse(result.output, nullptr, false);
        EXPECT_TRUE(played.is_object()) << result.output << result.errors;
        if (const std::string registry = played.value("registry", ""); registry.starts_with("HKEY_"))
            m_keys.insert(registry);
        return played;
    }

    ScratchFolder m_folder;

private:
    mutable std::set<std::string> m_keys;
};

const json& StepNamed(const json& played, const std::string& name)
{
    static const json kNone = {{"result", "missing"}, {"did", json::array()}, {"files", json::array()}};
    for (const json& step : played.at("steps"))
        if (step.at("name") == name)
            return step;
    return kNone;
}

/// What each step of a list of names did, in one text.
std::string Did(const json& played, const std::string& name)
{
    std::string text;
    for (const json& line : StepNamed(played, name).at("did"))
        text += line.get<std::string>() + '\n';
    return text;
}

void ExpectResults(const json& played, const std::map<std::string, std::string>& others)
{
    for (const json& step : played.at("steps")) {
        const auto other = others.find(step.at("name"));
        EXPECT_EQ(step.at("result"), other == others.end() ? "ok" : other->second) << step;
    }
}

TEST_F(Session, DoesWhatAnApplicationDoes)
{
    struct Row {
        const char* step;
        const char* part;
    };
    constexpr Row kRows[] = {
        {"hooks", "started event log, palettes, dockers"},
        {"language", "15 languages installed"},
        {"start", "comes up with \"_default\""},
        {"paper", "99 \u00d7 210"},
        {"workspaces", "\"Session\" is made from \"_default\""},
        {"refusal", "\"Session\" stays"},
        {"switch", "was 0 there and is 1 here"},
        {"tablet", "back at the desk: \"Session\""},
        {"export", "exported with its settings"},
        {"delete", "\"Draft\" is deleted"},
        {"fields", "2 * (3 + 4 is refused at 10"},
        {"fields", "99mm - 2*5mm is 89 mm"},
        {"tasks", "[####################] 100 %  Writing"},
        {"document", "Open_svg[VER 1100][ACCEPTED]"},
        {"document", "2 events stored"},
        {"photo", "turned upright"},
        {"duplicate", "their circle is closed"},
        {"shut down", "saved in \"Session\""},
        {"stop hooks", "stopped dockers, palettes, event log"},
    };
    const json played = Play(0);
    ExpectResults(played, {});
    for (const auto& [step, part] : kRows)
        EXPECT_THAT(Did(played, step), HasSubstr(part)) << step;
    std::size_t files = 0;
    for (const json& step : played.at("steps"))
        for (const json& file : step.at("files")) {
            EXPECT_TRUE(fs::exists(Folder() / fs::path(file.get<std::string>()))) << file;
            ++files;
        }
    EXPECT_GE(files, 11u);
    EXPECT_FALSE(fs::exists(User()));
    EXPECT_FALSE(fs::exists(m_folder.Path() / "user.db"));
    EXPECT_FALSE(fs::exists(Folder() / "Workspaces" / "Draft.tvws"));
}

TEST_F(Session, FindsWhatEarlierOnesHaveLeft)
{
    Play(0);
    const json again = Play(0);
    ExpectResults(again, {});
    EXPECT_THAT(Did(again, "language"), HasSubstr("stored language"));
    EXPECT_THAT(Did(again, "start"), HasSubstr("comes up with \"Session\""));
    EXPECT_THAT(Did(again, "locations"), HasSubstr("an earlier session has moved them"));
    EXPECT_THAT(Did(again, "paper"), HasSubstr("from an earlier session"));
    EXPECT_THAT(Did(again, "workspaces"), HasSubstr("\"Session\" is there from an earlier session"));
    EXPECT_THAT(Did(again, "workspaces"), HasSubstr("\"Draft\" is made"));
    EXPECT_THAT(Did(again, "switch"), HasSubstr("was 0 there and is 2 here"));
    EXPECT_THAT(Did(again, "consent"), HasSubstr("has said so in an earlier session"));
}

TEST_F(Session, ComesUpAgainAfterItWasKilled)
{
    for (const int milliseconds : {5, 20, 40, 80, 150, 250, 400, 700, 1000, 1500}) {
        ChildProcess child = Command({"--folder", Folder().string()});
        child.killAfter = std::chrono::milliseconds(milliseconds);
        RunProgram(child);
    }
    ExpectResults(Play(0), {});
}

TEST_F(Session, SaysWhichFolderCannotBeUsed)
{
    const fs::path file = m_folder.Path() / "file";
    std::ofstream(file) << "no folder";
    for (const fs::path& folder : {file, file / "below"}) {
        const ChildResult result = Run({"--folder", folder.string()});
        EXPECT_EQ(result.exitCode, kBadInput) << folder;
        EXPECT_THAT(result.errors, HasSubstr("can't be made")) << folder;
        EXPECT_EQ(result.output, "");
    }
}

TEST_F(Session, NamesTheStepThatFailsAndStillShutsDown)
{
    const fs::path text = m_folder.Path() / "text.jpg";
    std::ofstream(text) << "no photo";
    const json played = Play(kFailedStep, {"--photo", text.string()});
    ExpectResults(played, {{"photo", "failed"}, {"duplicate", "left out"}});
    EXPECT_THAT(StepNamed(played, "photo").value("problem", ""), HasSubstr("not a JPEG, TIFF, PNG or WebP file"));
    EXPECT_THAT(Did(played, "shut down"), HasSubstr("saved in \"Session\""));

    const ChildResult shown = Run({"--folder", Folder().string(), "--photo", text.string()});
    EXPECT_EQ(shown.exitCode, kFailedStep);
    EXPECT_THAT(shown.output, HasSubstr("FAILED: Photo.jpg: not a JPEG"));
}

TEST_F(Session, ShutsDownWhatHasNotComeUp)
{
    fs::create_directories(Folder());
    std::ofstream(Folder() / "Workspaces") << "in the way";
    const json played = Play(kFailedStep);
    EXPECT_EQ(StepNamed(played, "hooks").at("result"), "ok");
    EXPECT_EQ(StepNamed(played, "start").at("result"), "failed");
    EXPECT_EQ(StepNamed(played, "document").at("result"), "left out");
    EXPECT_EQ(StepNamed(played, "stop hooks").at("result"), "ok");
    EXPECT_EQ(StepNamed(played, "finalizers").at("result"), "ok");
}

TEST_F(Session, LeavesThePhotoOfTheUserAlone)
{
    Play(0);
    const fs::path photo = m_folder.Path() / "own.tif";
    std::string bytes = FileBytes(Folder() / "Photo.tif");
    ASSERT_GT(bytes.size(), 100u);
    constexpr std::size_t kOrientationValue = 8 + 2 + 7 * 12 + 8;
    bytes[kOrientationValue] = 3;   // upside down
    std::ofstream(photo, std::ios::binary) << bytes;
    EXPECT_THAT(Did(Play(0, {"--photo", photo.string()}), "photo"), HasSubstr("turned upright"));
    EXPECT_EQ(FileBytes(photo), bytes);
    EXPECT_EQ(FileBytes(Folder() / "Photo.tif")[kOrientationValue], 1);
}

TEST_F(Session, NamesTheFolderThatItMakes)
{
    const ChildResult result = Run({"--json"});
    ASSERT_EQ(result.exitCode, 0) << result.output << result.errors;
    const fs::path folder = fs::path(Read(result).at("folder").get<std::string>());
    EXPECT_TRUE(fs::exists(folder / "Flyer.svg"));
    EXPECT_EQ(fs::weakly_canonical(folder).parent_path(), fs::weakly_canonical(User() / "Temp"));
}

}   // namespace
