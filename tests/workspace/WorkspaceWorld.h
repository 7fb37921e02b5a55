// Workspaces of a test's own, in a user's folder of a test's own.
#pragma once

#include "UserWorld.h"
#include "WorkspaceFile.h"
#include "siblings/TvlComponent/ApplicationInfo.h"
#include "siblings/TvlPref/PrefManager.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>

inline constexpr const wchar_t* kConfiguration = L"content/workspace.xml";
inline constexpr const wchar_t* kSettings = L"content/settings.ini";

class WorkspaceWorld : public testing::Test {
protected:
    using Entries = std::initializer_list<std::pair<const wchar_t*, std::string>>;

    WorkspaceWorld()
    {
        CAppPrefManager::GetInstance().AttachStore(&m_preferences);
        TvlUtils::SetLogReceiver([this](TvlUtils::LogLevel, const TvlString& text) { log.push_back(text); });
    }
    ~WorkspaceWorld() override
    {
        TvlUtils::SetLogReceiver({});
        CAppPrefManager::GetInstance().AttachStore(m_store);
    }

    /// A workspace with these entries, and without properties.
    TvlString Make(const std::string& name, Entries entries)
    {
        const TvlString path = world.Path(name);
        WorkspaceContainer container = WorkspaceContainer::Create(path);
        for (const auto& [entry, bytes] : entries)
            EXPECT_TRUE(container.AddFile(entry, StreamOf(bytes), false, nullptr));
        EXPECT_TRUE(container.Close());
        return path;
    }
    static TvlUtils::Stream StreamOf(const std::string& bytes)
    {
        return TvlUtils::Stream::OverMemory(static_cast<const void*>(bytes.data()), bytes.size());
    }
    /// Bytes of an entry, or "none".
    static std::string Entry(const TvlString& path, const TvlString& name)
    {
        const WorkspaceContainer container = WorkspaceContainer::Open(path, ZipFile::OpenMode::Read);
        TvlUtils::Stream stream = container.OpenFile(name, false);
        std::string bytes(1 << 16, '\0');
        bytes.resize(stream.ReadSome(bytes.data(), bytes.size()));
        return stream ? bytes : "none";
    }

    UserWorld world;
    std::vector<TvlString> log;

private:
    MemoryPrefStore m_preferences;
    IPrefStore* m_store = CAppPrefManager::GetInstance().GetStore();
};
