// Paper, and measures that the user types.
#include "PaperTypes.h"
#include "Session.h"
#include "Units.h"
#include "WEqParser.h"
#include "WUnit.h"
#include "WorkspaceSettings.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlUtils/SystemIO.h"

namespace {
constexpr const wchar_t* kPaperName = L"Session flyer";
constexpr double kPaperWidth = 99.0;   // millimetres: a third of A4, as it goes into long envelopes
constexpr double kPaperHeight = 210.0;
constexpr int kMillimetre = 2;

/// A field of a frame, what is typed into it, and whether that has a value.
struct Typed {
    const char* frame;
    double Frame::*field;
    const char* label;
    const wchar_t* text;
    bool isAccepted;
};

constexpr Typed kTyped[] = {
    {"title", &Frame::width, "width", L"99mm - 2*5mm", true},
    {"title", &Frame::height, "height", L"1in", true},
    {"title", &Frame::x, "left edge", L"5", true},
    {"title", &Frame::y, "top edge", L"2 * (3 + 4", false},
    {"title", &Frame::y, "top edge", L"3 parsecs", false},
    {"title", &Frame::y, "top edge", L"1/2 cm", true},
    {"text", &Frame::width, "width", L"99mm - 2*5mm", true},
    {"text", &Frame::height, "height", L"3in + 8mm", true},
    {"text", &Frame::x, "left edge", L"5", true},
    {"text", &Frame::y, "top edge", L"1in + 1cm", true},
};

void Type(const Typed& typed, Frame& frame, StepLog& log)
{
    constexpr unsigned kFlags = kTokensAll | kTokensUnits;
    WUnit& units = WUnit::GetDefaultWUnit();
    const std::string field = typed.frame + std::string(", ") + typed.label + ": " + Shown(typed.text);
    double value = 0.0;
    const bool isAccepted = units.StringToValue(kMillimetre, typed.text, value, kFlags, DRG::Degrees) != 0;
    if (isAccepted) {
        frame.*typed.field = UNITConvertUnitToBase(kMillimetre, 0.0, value);
        log.Did(field + " is " + Shown(units.DisplayUnitValueAsString(kMillimetre, value, kUnitTextFirstName, -1)));
    } else {
        const WParseDiagnosis wrong = units.DiagnoseText(kMillimetre, typed.text, kFlags, DRG::Degrees);
        log.Did(field + " is refused at " + std::to_string(wrong.position) + ", where "
            + Shown(DescribeParseProblem(wrong.problem)));
    }
    Require(isAccepted == typed.isAccepted, "that is a mistake");
}

/// The place of the session's paper; it is added when it is missing.
int FindOrAddPaper(CPaperTypeMgr& papers, StepLog& log)
{
    const auto present = papers.FindCustomPaperIndex(kPaperName);
    if (present >= 0) {
        log.Did(Quoted(kPaperName) + " is there from an earlier session");
        return static_cast<int>(present);
    }
    PaperTypeInformation flyer = CPaperTypeMgr::SetCustomPaper(kPaperWidth, kPaperHeight, kMillimetre);
    flyer.DisplayName = kPaperName;
    papers.AddCustomPaper(flyer, true);
    log.Did(Quoted(kPaperName) + " is added");
    return static_cast<int>(papers.FindCustomPaperIndex(kPaperName));
}
}   // namespace

void ChoosePaper(Session& session, StepLog& log)
{
    CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
    Require(papers.GetPredefinedCount() == kPaperTypeCount, "the catalogue is not complete");
    log.Did(std::to_string(papers.GetPredefinedCount()) + " papers of the suite");
    PaperTypeInformation standard;
    PaperType usual = kPaperA4;
    static_cast<void>(OSUtils::LocaleEnvironment::GetPaperType(usual));
    Require(papers.GetPaperInfo(usual, standard), "the usual paper is missing");
    log.Did("usual here: " + Shown(standard.DisplayName) + ", " + Shown(TvlUtl::GetPageDimensions(standard)));

    papers.AddMRUItem(FindOrAddPaper(papers, log));
    CPaperTypeMgr::Shutdown();   // writes the file
    CPaperTypeMgr::ReleaseInstance(false);
    CPaperTypeMgr& reread = CPaperTypeMgr::GetInstance();
    PaperTypeInformation picked;
    const auto last = reread.GetMRUList();
    Require(!last.empty() && reread.GetPaperInfoAt(static_cast<int>(last.front()), picked)
            && picked.DisplayName == kPaperName,
        "the paper is not in the file");
    log.Did("picked: " + Shown(picked.DisplayName) + ", " + Shown(TvlUtl::GetPageDimensions(picked)));
    session.document.pages.push_back(std::make_unique<Page>());
    session.document.pages.front()->width = picked.Width;
    session.document.pages.front()->height = picked.Height;
    log.Left(TvlUtils::SystemIO::Path::Combine(GetUserProfileConfigDir(), L"PaperTypes.xml"));
}

void FillFields(Session& session, StepLog& log)
{
    Page& page = *session.document.pages.front();
    Frame& title = page.Add("title");
    Frame& text = page.Add("text");
    title.next = &text;
    text.next = &title;   // what fits into neither begins anew
    for (const Typed& typed : kTyped)
        Type(typed, *page.Find(typed.frame), log);
}
