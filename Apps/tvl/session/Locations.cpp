// Where the user's files lie, and what the user agrees to.
#include "CFileLocations.h"
#include "Privacy.h"
#include "Session.h"
#include "WorkspaceSettings.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>

namespace SystemIO = TvlUtils::SystemIO;

namespace {
/// Moves the fills to a folder of the user's choice.
void MoveFills(const TvlString& from, const TvlString& to, StepLog& log)
{
    const auto locations = CFileLocations::GetFileLocations();
    const auto fills =
        std::find_if(locations.begin(), locations.end(), [&](const auto& location) { return location.first == from; });
    Require(fills != locations.end(), "no location has the folder of the fills");
    const TvlString name = fills->second;
    Require(static_cast<bool>(SystemIO::File::WriteAside(SystemIO::Path::Combine(from, L"Stripes.fill"), "stripes")),
        "the folder of the fills can't be written to");
    Require(static_cast<bool>(SystemIO::Folder::EnsureExists(to)), log.Name(to) + " can't be made");
    CFileLocations::Moves moves{{name, {to, from}}};
    std::size_t copied = 0;
    CFileLocations::MigrateContent(moves, [&](const MigrationStep& step) { copied += step.problem.IsEmpty(); });
    CFileLocations::SetFileLocation({to, name});
    log.Did(Quoted(name) + " moves from " + log.Name(from) + " with " + Count(copied, "file"));
}
}   // namespace

void FindLocations(Session& session, StepLog& log)
{
    Require(CFileLocations::StartAccessResource(), "the user's folders are not accessible");
    log.Did(Count(CFileLocations::GetFileLocations().size(), "location"));
    const TvlString own = SystemIO::Path::AddBackslash(session.folder.File(L"Studio/Fills"));
    const TvlString before = CFileLocations::GetFileLocationsFillsDir();
    if (before == own)
        log.Did("the fills are where an earlier session has moved them");
    else
        MoveFills(before, own, log);
    const TvlString now = CFileLocations::GetFileLocationsFillsDir();
    Require(now == own, "the fills are in " + log.Name(now));
    log.Left(now);
}

void AskForConsent(Session&, StepLog& log)
{
    using namespace TvlUtl::Privacy;
    if (GetShareSearchTerms() == 0) {
        log.Did("search terms are not shared: the user has said so in an earlier session");
    } else {
        SetShareSearchTerms(0);
        log.Did("search terms are not shared: the user has just said so");
    }
    Require(GetShareSearchTerms() == 0, "the answer is not kept");
    log.Did(GetShareFeatureUsage() != 0 ? "the use of features is shared" : "the use of features is not shared");
}
