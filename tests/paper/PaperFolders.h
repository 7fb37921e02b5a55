// A suite and a user of a test's own.
#pragma once

#include "ChildProcess.h"
#include "FakeEnvironment.h"
#include "FakeLocale.h"
#include "MemoryRegistry.h"
#include "PaperTypes.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

/// Folders with a copy of the real master, an empty registry, and American settings. Papers come from there as long as
/// the object lives.
class PaperFolders : public testing::Test {
protected:
    PaperFolders()
    {
        std::filesystem::create_directories(m_folder.Path() / "Suite" / "Config");
        std::filesystem::create_directories(m_folder.Path() / "User" / "Config");
        std::filesystem::copy(std::filesystem::path(SUITE_FOLDER) / "Languages",
            m_folder.Path() / "Suite" / "Languages", std::filesystem::copy_options::recursive);
        std::filesystem::copy(std::filesystem::path(SUITE_FOLDER) / "Config" / "PaperTypes.xml", Master());
        locale.settings[Ports::LocaleSetting::CountryCode] = L"US";
        Framework::Resources::SetLanguageFolder(L"EN");
    }
    ~PaperFolders() override
    {
        CPaperTypeMgr::ReleaseInstance(false);
        Framework::Resources::SetLanguageFolder(L"EN");
    }

    std::filesystem::path Master() const { return m_folder.Path() / "Suite" / "Config" / "PaperTypes.xml"; }
    std::filesystem::path User() const { return m_folder.Path() / "User" / "Config" / "PaperTypes.xml"; }
    std::filesystem::path Backup() const { return User().parent_path() / "PaperTypes_backup.xml"; }
    static void Write(const std::filesystem::path& path, const std::string& bytes)
    {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    /// The file with one text in the place of another, each time it occurs.
    static void Replace(const std::filesystem::path& path, const std::string& from, const std::string& to)
    {
        std::string bytes = FileBytes(path);
        std::size_t count = 0;
        for (std::size_t at = 0; (at = bytes.find(from, at)) != bytes.npos; at += to.size(), ++count)
            bytes.replace(at, from.size(), to);
        EXPECT_GT(count, 0u) << from;
        Write(path, bytes);
    }

    static CPaperTypeMgr& Papers() { return CPaperTypeMgr::GetInstance(); }
    /// Ends the store as an application does, and the object with it, so that the next question starts anew.
    static void Restart()
    {
        CPaperTypeMgr::Shutdown();
        CPaperTypeMgr::ReleaseInstance(false);
    }
    static PaperTypeInformation Custom(const wchar_t* name, int width, int height, int units = 2)
    {
        PaperTypeInformation paper;
        paper.DisplayName = name;
        paper.Width = width;
        paper.Height = height;
        paper.Units = units;
        return paper;
    }

    FakeLocale locale;

private:
    ScratchFolder m_folder;
    FakeEnvironment m_environment{{
        {L"TVL_SUITE_DIR", TvlUtils::SystemIO::FromFilePath(m_folder.Path() / "Suite").Std()},
        {L"TVL_USER_DIR", TvlUtils::SystemIO::FromFilePath(m_folder.Path() / "User").Std()},
    }};
    MemoryRegistry m_registry;
};
