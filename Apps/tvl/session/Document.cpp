// The document: rendered, saved, opened and duplicated.
#include "CommandTask.h"
#include "Duplication.h"
#include "Session.h"
#include "TaskText.h"
#include "TrackFileFormatUse.h"
#include "WorkspaceSettings.h"
#include "siblings/TvlConfig/EventLog.h"
#include "siblings/TvlConfig/ProductAnalytics.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <cmath>

namespace SystemIO = TvlUtils::SystemIO;

namespace {
constexpr double kTenthsOfMicronPerPixel = 2540.0;   // 100 pixels per inch
constexpr unsigned long long kLayout = 20, kRendering = 70, kWriting = 10;
constexpr unsigned char kPaperGrey = 255, kFrameGrey = 192;

std::size_t Pixels(double length) { return static_cast<std::size_t>(length / kTenthsOfMicronPerPixel + 0.5); }

/// A picture of a page, one byte a pixel.
struct Picture {
    std::size_t width;
    std::size_t height;
    std::string bytes;
};

/// Fills a frame's rows, of which each is a unit of the task's step.
void FillFrame(Picture& picture, const Frame& frame, TvlUtl::ITaskProgress& task, unsigned long long worth)
{
    const std::size_t top = std::min(Pixels(frame.y), picture.height);
    const std::size_t bottom = std::min(Pixels(frame.y + frame.height), picture.height);
    const std::size_t left = std::min(Pixels(frame.x), picture.width);
    const std::size_t right = std::min(Pixels(frame.x + frame.width), picture.width);
    task.BeginSubTask(worth, bottom - top);
    for (std::size_t row = top; row < bottom && !task.IsCancelled(); ++row) {
        picture.bytes.replace(row * picture.width + left, right - left, right - left, static_cast<char>(kFrameGrey));
        task.SetProgress(row - top + 1, (L"Rendering " + TvlPlatform::FromUtf8(frame.name)).c_str());
    }
    task.EndSubTask();
}

/// The page as a picture: a step of the task, with a step in it for each frame.
Picture Render(const Page& page, TvlUtl::ITaskProgress& task)
{
    task.SetProgress(kLayout, L"Layout");
    Picture picture{Pixels(page.width), Pixels(page.height), {}};
    picture.bytes.assign(picture.width * picture.height, static_cast<char>(kPaperGrey));
    task.BeginSubTask(kRendering, page.frames.size());
    for (const auto& frame : page.frames)
        FillFrame(picture, *frame, task, 1);
    task.EndSubTask();
    return picture;
}

/// Tells how far a task is, each time that it is another quarter of its way on.
class Quarters {
public:
    Quarters(TvlUtl::ITaskProgress& task, StepLog& log)
        : m_log(log), m_progress(task.GetProgressEvent().Subscribe(
                          [this](void* sender) { Tell(*static_cast<TvlUtl::ITaskProgress*>(sender)); }))
    {
    }

private:
    void Tell(TvlUtl::ITaskProgress& task)
    {
        constexpr std::size_t kBarWidth = 20;
        const int quarter = WholePercent(task.GetProgress()) / 25;
        if (quarter <= m_last)
            return;
        m_last = quarter;
        m_log.Did(TvlPlatform::ToUtf8(ProgressText(task, {}, kBarWidth)));
    }

    StepLog& m_log;
    int m_last = 0;
    TvlUtils::Subscription m_progress;
};

/// Does something to a file of the document under a record of what the file's format is used for.
template <class Operation>
void Track(const TvlString& path, const wchar_t* context, Flyer& document, Operation operation)
{
    const TrackFileFormatUse use = TrackFileFormatUse::StartGlobal(path, context);
    const bool done = operation();
    // Other layers, which only know the path, find the record.
    TrackFileFormatUse found = TrackFileFormatUse::Find(path);
    Require(static_cast<bool>(found), "the record of the operation is not found");
    found.Lock()->SetVersion(L"1100").SetDocInfo(document);
    Require(done, "the document does not come through \"" + TvlPlatform::ToUtf8(context) + "\"");
    found.Accept();
}

std::size_t CountEvents(const TvlString& file)
{
    return ProductAnalytics::EventReader(SystemIO::Path::GetFolderName(file)).ReadNew().size();
}

/// Width of all frames, of the whole document.
double SumOfWidths(const Flyer& document)
{
    double sum = 0.0;
    for (const auto& page : document.pages)
        for (const auto& frame : page->frames)
            sum += frame->width;
    return sum;
}
}   // namespace

void RenderPreview(Session& session, StepLog& log)
{
    const TvlString file = session.folder.File(L"Preview.pgm");
    TvlUtl::ITaskProgressMgr& manager = TvlUtl::ITaskProgressMgr::GetInst();
    constexpr unsigned long long kPreviewGroup = 2;
    TvlUtl::ITaskProgress* const stopped = manager.CreateTask(kPreviewGroup, 2, L"Older preview");
    manager.CancelGroup(kPreviewGroup, TvlUtl::eTaskAnyType);
    const bool wasCancelled = stopped->IsCancelled();
    stopped->Finish();
    Require(wasCancelled && manager.GetTaskCount(kPreviewGroup, TvlUtl::eTaskAnyType, TvlUtl::eTaskStateAny) == 0,
        "a task can't be cancelled");
    log.Did("an older preview is cancelled");
    {
        CommandTask preview(L"Preview");
        TvlUtl::ITaskProgress& task = preview.Task();
        const Quarters quarters(task, log);
        const Picture picture = Render(*session.document.pages.front(), task);
        preview.EndIfCancelled();
        const std::string head =
            "P5\n" + std::to_string(picture.width) + ' ' + std::to_string(picture.height) + "\n255\n";
        Require(static_cast<bool>(SystemIO::File::WriteAside(file, head + picture.bytes)),
            log.Name(file) + " can't be written");
        task.SetProgress(kLayout + kRendering + kWriting, L"Writing");
        Require(WholePercent(task.GetProgress()) == 100, "the task is not complete");
    }
    log.Left(file);
}

void SaveAndOpenDocument(Session& session, StepLog& log)
{
    const TvlString path = session.folder.File(L"Flyer.svg");
    IProductAnalyticsCore& analytics = ProductAnalytics::GetInstance();
    const TvlString events = analytics.GetEventFile();
    const std::size_t before = CountEvents(events);
    const double widths = SumOfWidths(session.document);
    Track(path, L"SaveAs", session.document, [&] { return session.document.Save(path); });
    session.document.pages.clear();
    Track(path, L"Open", session.document, [&] { return session.document.Open(path); });
    Require(std::abs(SumOfWidths(session.document) - widths) < 1.0, "the document has other measures in its file");
    for (const TvlString& label : session.application->Labels())
        log.Did("told to the application: " + Shown(label));
    const std::size_t stored = CountEvents(events) - before;
    log.Did(Count(stored, "event") + " stored" + (analytics.IsSharing() ? "" : ": the user does not share them"));
    Require(stored == (analytics.IsSharing() ? 2u : 0u), "that is not what was to be stored");
    Require(session.application->Labels().size() == 2, "the application was told something else");
    log.Left(path);
    if (analytics.IsSharing())
        log.Left(events);
}

void DuplicatePage(Session& session, StepLog& log)
{
    Page& page = *session.document.pages.front();
    {
        TvlUtl::DuplicationContext context;
        session.document.pages.emplace_back(static_cast<Page*>(context.FindOrDuplicateMappedInstance(&page, true)));
        Require(context.FindMappedInstance(page.frames.front().get(), false)
                == session.document.pages.back()->frames.front().get(),
            "the copy of a frame is not found");
    }
    const Page& copy = *session.document.pages.back();
    const Frame* const title = copy.Find("title");
    Require(title && title != page.Find("title"), "the frames are not copied");
    Require(title->next && title->next->next == title && title->next == copy.Find("text"),
        "the copied frames do not refer to each other");
    const TvlString path = session.folder.File(L"Flyer with two pages.svg");
    Require(session.document.Save(path), log.Name(path) + " can't be written");
    log.Did("a page with " + Count(copy.frames.size(), "frame") + " is copied, and their circle is closed");
    log.Left(path);
}
