// The terminal view of running tasks.
#include "TaskView.h"

#include "EndOfTask.h"
#include "TaskText.h"
#include "TerminalText.h"

#include <gmock/gmock.h>
#include <sstream>

namespace {
using namespace std::chrono_literals;
using namespace TvlUtl;
using testing::EndsWith;
using testing::HasSubstr;

struct View : testing::Test {
    TaskView::Time now{};
    std::ostringstream out;
    std::function<TaskView::Time()> clock = [this] { return now; };

    std::string Take()
    {
        std::string taken = out.str();
        out.str("");
        return taken;
    }
};

TEST(TaskText, TellsSpans)
{
    constexpr std::pair<std::chrono::seconds, const wchar_t*> kRows[] = {
        {-3s, L"0:00"}, {5s, L"0:05"}, {60s, L"1:00"}, {3599s, L"59:59"}, {3723s, L"1:02:03"}};
    for (const auto& [span, text] : kRows)
        EXPECT_EQ(SpanText(span), text);
}

TEST(TaskText, TellsRateTimeLeftAndStep)
{
    const OwnedTask task = MakeTask(1, 2);
    EXPECT_EQ(ProgressText(*task, 10s, 10), L"");
    task->SetProgress(0, L"1.2 MB");
    EXPECT_EQ(ProgressText(*task, 10s, 10), L"1.2 MB") << "nobody knows the whole";
    task->SetProgress(25, L"reading");
    EXPECT_EQ(ProgressText(*task, 500ms, 10), L"[##        ]  25 %  reading") << "too early for a rate";
    EXPECT_EQ(ProgressText(*task, 10s, 10), L"[##        ]  25 %  2.5 %/s  0:30 left  reading");
    EXPECT_EQ(ProgressText(*task, 10s, 0), L" 25 %  2.5 %/s  0:30 left  reading");
    task->BeginSubTask(50, 2);
    task->SetProgress(1, L"decoding");
    EXPECT_EQ(ProgressText(*task, 10s, 4), L"[##  ]  50 %  5.0 %/s  0:10 left  decoding");
    task->EndSubTask();
    task->SetProgress(200, L"");
    EXPECT_EQ(ProgressText(*task, 10s, 4), L"[####] 100 %  10.0 %/s  0:00 left");
}

// Steps may be told to be worth more than the whole task.
TEST(TaskText, EndsAtTheWhole)
{
    const OwnedTask task = MakeTask(1, 2);
    task->BeginSubTask(1'000'000'000'000, 2);
    task->SetProgress(1, L"too much");
    EXPECT_GT(task->GetProgress(), 1.0);
    EXPECT_EQ(ProgressText(*task, 10s, 4), L"[####] 100 %  10.0 %/s  0:00 left  too much");
    for (int percent = 0; percent <= 100; ++percent)
        EXPECT_EQ(WholePercent(percent / 100.0), percent);
    EXPECT_EQ(WholePercent(0.999), 99);
    EXPECT_EQ(WholePercent(1e300), 100);
}

TEST(TerminalText, IsCutAtColumns)
{
    struct Row {
        const wchar_t* line;
        std::size_t columns;
        const wchar_t* cut;
    };
    constexpr Row kRows[] = {{L"", 3, L""}, {L"abc", 3, L"abc"}, {L"abc", 2, L"ab"}, {L"größe", 4, L"größ"},
        {L"\x65E5\x672C", 4, L"\x65E5\x672C"}, {L"\x65E5\x672C", 3, L"\x65E5"}, {L"a\xAC00z", 3, L"a\xAC00"},
        {L"\xFF21", 1, L""}, {L"a\U0001F600", 2, L"a"}, {L"a\U0001F600", 3, L"a\U0001F600"}};
    for (const auto& [line, columns, cut] : kRows)
        EXPECT_EQ(CutToColumns(line, columns), cut) << columns;
    for (const auto& [line, columns, padded] : {Row{L"", 2, L"  "}, Row{L"größe", 6, L"größe "},
             Row{L"\x65E5\x672C", 6, L"\x65E5\x672C  "}, Row{L"abc", 2, L"abc"}})
        EXPECT_EQ(PaddedToColumns(line, columns), padded) << columns;
    EXPECT_EQ(ColumnsOf(L"a\x65E5\U0001F600"), 5u);
}

TEST_F(View, DrawsOneLineForATaskAndTakesItAway)
{
    TaskView view(out, {60, true}, clock);
    OwnedTask task = MakeTask(1, 2, L"Copying");
    task->SetProgress(10, nullptr);
    EXPECT_EQ(Take(), "") << "short tasks show nothing";
    now += 2s;
    task->SetProgress(50, L"a.cdr");
    EXPECT_EQ(Take(), "Copying  [############            ]  50 %  25.0 %/s  0:02 l");
    task->SetProgress(51, nullptr);
    EXPECT_EQ(Take(), "") << "too soon";
    now += 200ms;
    task->SetProgress(52, L"a\nb");
    EXPECT_THAT(Take(), testing::StartsWith("\r\x1b[JCopying  [############            ]  52 %"));
    {
        const TaskView::Pause pause(view);
        EXPECT_EQ(Take(), "\r\x1b[J");
    }
    now += 200ms;
    task->SetProgress(53, nullptr);
    Take();
    task.reset();
    EXPECT_EQ(Take(), "\r\x1b[J");
}

TEST_F(View, ShowsSeveralGroupsWithTheirTasks)
{
    TaskView view(out, {80, true}, clock);
    const OwnedTask a = MakeTask(8, 2, L"Later group");
    const OwnedTask b = MakeTask(7, 2, L"First");
    const OwnedTask c = MakeTask(7, 3, L"Second");
    now += 500ms;
    b->SetProgress(50, nullptr);
    EXPECT_EQ(
        Take(), "Group 7: 25 %\n  First  [############            ]  50 %\n  Second  \nGroup 8: 0 %\n  Later group  ");
    now += 1s;
    c->SetProgress(1, nullptr);
    EXPECT_THAT(Take(), testing::StartsWith("\r\x1b[4A\x1b[JGroup 7: 25 %\n"));
}

TEST_F(View, StaysOnOneLineOfATerminalWithoutEscapes)
{
    TaskView view(out, {30, false}, clock);
    OwnedTask a = MakeTask(7, 2, L"First");
    OwnedTask b = MakeTask(7, 2, L"Second");
    now += 500ms;
    a->SetProgress(50, nullptr);
    EXPECT_EQ(Take(), "First   50 %");
    a.reset();
    b.reset();
    EXPECT_EQ(Take(), "\r            \r");
}

TEST_F(View, KeepsToItsLineWhateverTheTextsHold)
{
    TaskView view(out, {20, false}, clock);
    OwnedTask task = MakeTask(7, 2, L"\x65E5\x672C\x65E5\x672C");
    now += 500ms;
    task->SetProgress(50,
        L"a\x9B"
        L"2J\x65E5");
    EXPECT_EQ(Take(), "\u65E5\u672C\u65E5\u672C   50 %  a ") << "nineteen columns";
    task.reset();
    EXPECT_EQ(Take(), "\r" + std::string(19, ' ') + "\r");
}

TEST_F(View, KeepsPlainLinesWholeWhateverTheTextsHold)
{
    TaskView view(out, {}, clock);
    OwnedTask failed = MakeTask(1, 2, L"two\nlines");
    now += 10s;
    failed->SetProgress(50, L"\x1B[2J");
    failed->SetError(L"\x9B"
                     L"2J\r\n");
    failed.reset();
    EXPECT_EQ(Take(), "two lines:  50 %  5.0 %/s  0:10 left   [2J\ntwo lines: failed:  2J  \n");
}

TEST_F(View, TellsOfLongTasksInPlainLines)
{
    TaskView view(out, {}, clock);
    OwnedTask shortTask = MakeTask(1, 2, L"Short");
    OwnedTask task = MakeTask(1, 2, L"Long");
    OwnedTask failed = MakeTask(1, 3, L"Failing");
    OwnedTask cancelled = MakeTask(1, 4, L"Cancelled");
    shortTask->SetProgress(90, nullptr);
    shortTask.reset();
    EXPECT_EQ(Take(), "");
    now += 10s;
    task->SetProgress(20, L"page 1");
    EXPECT_THAT(Take(), testing::StartsWith("Long:  20 %  2.0 %/s  0:40 left  page 1\nFailing: "));
    now += 1s;
    task->SetProgress(30, nullptr);
    EXPECT_EQ(Take(), "") << "a line every few seconds";
    failed->SetError(L"the disk is full");
    cancelled->Cancel();
    failed.reset();
    cancelled.reset();
    task.reset();
    EXPECT_EQ(Take(), "Failing: failed: the disk is full\nCancelled: cancelled\nLong: done in 0:11\n");
}

}   // namespace
