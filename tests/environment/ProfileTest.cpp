// Private profile files, and paths in them.
#include "ChildProcess.h"
#include "ProfilePath.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/ProfileText.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/ProfileFiles.h"

#include <fstream>
#include <gtest/gtest.h>

namespace {
namespace SystemIO = TvlUtils::SystemIO;
using namespace std::string_literals;
using TvlUtils::ProfileText;

class ProfileFiles : public testing::Test {
protected:
    void Write(const std::string& bytes) { std::ofstream(folder.Path() / "x.ini", std::ios::binary) << bytes; }
    std::wstring Get(const wchar_t* section, const wchar_t* key, const wchar_t* missing = L"?", DWORD size = 64)
    {
        std::vector<wchar_t> buffer(size + 1, L'#');
        const DWORD copied = port.GetText(section, key, missing, buffer.data(), size, file.c_str());
        EXPECT_EQ(buffer[size], L'#');
        EXPECT_EQ(buffer[copied], L'\0');
        return {buffer.data(), copied};
    }

    ScratchFolder folder;
    std::wstring file = SystemIO::FromFilePath(folder.Path() / "x.ini").Std();
    Ports::ProfileFiles& port = Ports::ProfileFiles::Get();
};

// What every target's files mean.
TEST_F(ProfileFiles, GiveValuesByNamesWithoutCase)
{
    EXPECT_EQ(Get(L"Paths", L"a", L"missing  "), L"missing");
    Write("; head\r\n[Paths]\r\nFonts = C:\\Fonts \r\nquoted=\" a b \"\r\nsingle='x'\r\nempty=\r\nfonts=second\r\n"
          ";off=1\r\nno value\r\n\r\n[Other]\nlf=1\n[Paths]\nlater=1");
    EXPECT_EQ(Get(L"paths", L"FONTS"), L"C:\\Fonts");
    EXPECT_EQ(Get(L"Paths", L"quoted"), L" a b ");
    EXPECT_EQ(Get(L"Paths", L"single"), L"x");
    EXPECT_EQ(Get(L"Paths", L"empty"), L"");
    EXPECT_EQ(Get(L"Paths", L"off"), L"?");
    EXPECT_EQ(Get(L"Other", L"lf"), L"1");
    EXPECT_EQ(Get(L"None", L"lf"), L"?");
    EXPECT_EQ(Get(L"None", L"lf", nullptr), L"");
    EXPECT_EQ(Get(L"Paths", L"Fonts", L"", 5), L"C:\\F");
    EXPECT_EQ(Get(L"Other", nullptr), L"lf\0"s);
    EXPECT_EQ(Get(L"Paths", nullptr, L"", 12).substr(0, 10), L"Fonts\0quot"s);
}

TEST_F(ProfileFiles, KeepWhatTheyDoNotChange)
{
    Write("; head\r\n[A]\r\nx=1\r\n; tail\r\n\r\n[B]\r\ny=2\r\n");
    EXPECT_TRUE(port.SetText(L"A", L"z", L"3", file.c_str()));
    EXPECT_TRUE(port.SetText(L"A", L"X", L"4", file.c_str()));
    EXPECT_TRUE(port.SetText(L"B", L"y", nullptr, file.c_str()));
    EXPECT_TRUE(port.SetText(L"C", L"new", L"5", file.c_str()));
    EXPECT_EQ(Get(L"A", L"z") + Get(L"A", L"x") + Get(L"B", L"y") + Get(L"C", L"new"), L"34?5");
    EXPECT_TRUE(port.SetText(L"C", nullptr, nullptr, file.c_str()));
    EXPECT_EQ(Get(L"C", L"new"), L"?");
    const std::string bytes = FileBytes(folder.Path() / "x.ini");
    EXPECT_NE(bytes.find("; head"), std::string::npos);
    EXPECT_NE(bytes.find("; tail"), std::string::npos);
}

TEST_F(ProfileFiles, TakeLinesOfAMegabyte)
{
    const std::string line(std::size_t{1} << 20, 'x');
    Write(line + "\r\n[" + line + "]\r\n" + line + "=1\r\n[A]\r\n" + line + "=" + line + "\r\nkey=" + line
        + "\r\nb=2\r\n");
    EXPECT_EQ(Get(L"A", L"b"), L"2");
    EXPECT_EQ(Get(L"A", L"key"), std::wstring(63, L'x'));
    EXPECT_EQ(Get(L"A", L"none"), L"?");
    EXPECT_EQ(Get(nullptr, nullptr).size(), 62u);
}

TEST(ProfileText, ReadsEachEncodingAndWritesItBack)
{
    const std::string text = "[\xC3\x84]\nk=\xE2\x82\xAC\n";
    for (const std::string& bytes : {text, "\xEF\xBB\xBF" + text, "\xFF\xFE[\0\xC4\0]\0\n\0k\0=\0\xAC\x20\n\0"s}) {
        ProfileText profile(bytes);
        EXPECT_EQ(profile.Value(L"\xE4", L"K"), L"\x20AC");
        EXPECT_EQ(profile.Bytes(), bytes);
        EXPECT_TRUE(profile.SetValue(L"\xC4", L"n", L"\xFC"));
        const ProfileText again(profile.Bytes());
        EXPECT_EQ(again.Value(L"\xC4", L"n"), L"\xFC");
        EXPECT_EQ(again.Keys(L"\xC4"), (std::vector<std::wstring>{L"k", L"n"}));
    }
    ProfileText damaged("[a]\n\xFF\xFE\x80=1\nb=2");
    EXPECT_TRUE(damaged.SetValue(L"a", L"b", L"3"));
    EXPECT_EQ(damaged.Bytes(), "[a]\n\xFF\xFE\x80=1\nb=3\n");
}

TEST(ProfileText, RefusesWhatWouldReadBackAsSomethingElse)
{
    ProfileText profile("[a]\nb=1\n");
    struct Row {
        const wchar_t* section;
        const wchar_t* key;
        const wchar_t* value;
    };
    constexpr Row kRows[] = {{L"a", L"b", L"1\n[c]"}, {L"a]", L"b", L""}, {L"a", L"b=c", L""}, {L"a", L"", L""},
        {L"a", L" ;b", L""}, {L"a", L"[b", L""}, {L"a\r", L"b", L""}, {L"a", L"b\n", L""}};
    for (const auto& [section, key, value] : kRows)
        EXPECT_FALSE(profile.SetValue(section, key, value)) << section << key;
    EXPECT_EQ(profile.Bytes(), "[a]\nb=1\n");
}

TEST_F(ProfileFiles, NamePathsRelativeToABase)
{
    Write("[P]\r\nsub=Fonts/a.ttf\r\nup=../b\r\nempty=\r\n");
    const auto root = folder.Path().root_path();
    const auto text = [](const std::filesystem::path& path) { return SystemIO::FromFilePath(path).Std(); };
    const std::wstring base = text(root / "data" / "in");
    const struct {
        const wchar_t* key;
        std::wstring path;
    } rows[] = {
        {L"sub", text(root / "data" / "in" / "Fonts" / "a.ttf")}, {L"up", text(root / "data" / "b")}, {L"empty", base},
        {L"none", base},   // stands for the value, and an absolute value stands alone
    };
    wchar_t out[64];
    for (const auto& [key, path] : rows) {
        EXPECT_EQ(UTLGetPrivateProfileRelPath(L"P", key, base.c_str(), out, 64, file.c_str()), path.size());
        EXPECT_EQ(out, path);
    }
    const auto length = static_cast<ULONG>(base.size());
    EXPECT_EQ(UTLGetPrivateProfileRelPath(L"P", L"none", base.c_str(), out, length + 1, file.c_str()), length);
    EXPECT_EQ(UTLGetPrivateProfileRelPath(L"P", L"none", base.c_str(), out, length, file.c_str()), 0u);
    EXPECT_EQ(*out, L'\0');
    *out = L'#';
    EXPECT_EQ(UTLGetPrivateProfileRelPath(L"P", L"none", base.c_str(), out, 0, file.c_str()), 0u);
    EXPECT_EQ(*out, L'#');
    EXPECT_EQ(UTLGetPrivateProfileRelPath(L"P", L"none", L"data", out, 64, file.c_str()), 9u);
    EXPECT_EQ(out, text(std::filesystem::path("data") / "data"));
}

}   // namespace
