// Taking a newer master over into the user's file.
#include "PaperTypes.h"

#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvlUtils/FileStat.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <algorithm>
#include <stdexcept>

using namespace TvlUtils::SystemIO;

namespace {
constexpr const wchar_t* kBackupName = L"PaperTypes_backup.xml";

/// Time of the master that the user's file was last brought in line with, as the decimal text of a time_t.
CAppPrefObject<TvlString>& InstallTime()
{
    static CAppPrefObject<TvlString> time(L"PaperTypes/InstallTime");
    return time;
}

/// Version of the predefined set; 1 when the document has none.
int PresetVersion(const WXmlDoc& document)
{
    for (const WXmlNode& node : document.GetNodes(WXPath(L"/PageSizes")))
        try {
            return node.Attribute(L"preset_version").GetInt_throws();
        } catch (const std::runtime_error&) {
            // What is no number counts as missing.
        }
    return 1;
}

/// The hidden papers of the user stay hidden; no other change of theirs to a predefined paper survives.
void KeepHidden(const std::vector<PaperTypeInformation>& user, std::vector<PaperTypeInformation>& master)
{
    for (const PaperTypeInformation& paper : user) {
        const auto same = std::find_if(
            master.begin(), master.end(), [&](const PaperTypeInformation& other) { return other.Type == paper.Type; });
        if (same != master.end() && paper.Hidden)
            same->Hidden = true;
    }
}

void Renumber(std::vector<PaperTypeInformation>& custom, std::size_t first)
{
    for (PaperTypeInformation& paper : custom) {
        paper.CustomId = static_cast<std::int32_t>(first++);
        paper.Type = kPaperCustom;
    }
}
}   // namespace

bool CPaperTypeMgr::UpdatePredefinedSizes(const TvlString& master, const TvlString& user)
{
    const FileStat masterStat = File::GetFileStat(master);
    const TvlString stamp = std::to_wstring(masterStat.time.ToTimeT(TvlUtils::TimeZone::Utc));
    if (InstallTime().GetValue() == stamp)
        return true;
    if (File::GetFileStat(user) == masterStat) {
        InstallTime().Change(stamp);
        return true;
    }

    WXmlDoc masterDocument(false);
    WXmlDoc userDocument(false);
    if (!masterDocument.Load(master) || !userDocument.Load(user))
        return false;
    const int version = PresetVersion(masterDocument);
    if (version <= PresetVersion(userDocument)) {
        InstallTime().Change(stamp);
        return true;
    }
    if (!File::Copy(user, Path::ReplaceFileName(user, kBackupName), true))
        return false;

    std::vector<PaperTypeInformation> papers;
    std::vector<PaperTypeInformation> userPapers;
    std::vector<PaperTypeInformation> customPapers;
    ReadPaperArrayFromXml(masterDocument, L"/PageSizes/sizes/*", papers, false);
    ReadPaperArrayFromXml(userDocument, L"/PageSizes/sizes/*", userPapers, false);
    ReadPaperArrayFromXml(userDocument, L"/PageSizes/CustomPageSizes/*", customPapers, true);
    KeepHidden(userPapers, papers);
    Renumber(customPapers, papers.size());

    // The merged document goes in place of the user's file in one step: a crash before leaves the old one, so that the
    // next start tries again. Where it can't be written a copy of the master takes the place, on which callers rely; the
    // custom papers are in the backup alone then.
    const bool isMerged = WritePaperArrayToXml(masterDocument, L"sizes", papers, false)
        && WritePaperArrayToXml(masterDocument, L"CustomPageSizes", customPapers, true);
    for (const WXmlNode& node : masterDocument.GetNodes(WXPath(L"/PageSizes")))
        node.Attribute(L"preset_version").SetInt(version);
    if (!isMerged || !masterDocument.Save(user)) {
        CopyXmlFromSystemFolder();
        return false;
    }
    InstallTime().Change(stamp);
    return true;
}
