// Regional settings that fail or change in the middle of an operation, and clocks that nobody would set so. Nothing crashes or
// breaks what holds; what needs no region is done all the same.
#include "FakeClock.h"
#include "NamedOperation.h"
#include "Tally.h"

#include "windows/Locale.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <limits>

namespace {
constexpr int kNever = std::numeric_limits<int>::max();
constexpr int kMostPoints = 12;   // of one operation and fault, unless the run is whole

enum class Wandering {
    Fails,         // one answer is missing
    FailsOnward,   // so are all behind it
    Moves,         // the user chooses another region
    MovesAlways,   // and another one again before each answer
};

/// The system's settings, until they are not.
class WanderingLocale final : public Ports::Locale {
public:
    WanderingLocale(int point, Wandering kind) : m_system(Ports::Locale::Get()), m_point(point), m_kind(kind)
    {
        SetForTests(this);
    }
    ~WanderingLocale() override { SetForTests(nullptr); }

    std::optional<std::wstring> Setting(Ports::LocaleSetting setting, std::size_t capacity) const override
    {
        if (!Next())
            return m_system.Setting(setting, capacity);
        return HasFailed() ? std::nullopt : std::optional(Moved(setting));
    }
    unsigned SettingsVersion() const override
    {
        return m_version + static_cast<unsigned>(m_count <= m_point ? 0 : IsAlways() ? m_count : 1);
    }
    std::optional<std::wstring> FormatNumber(std::wstring_view number, const Ports::NumberFormat& format) const override
    {
        return Next() && HasFailed() ? std::optional<std::wstring>() : m_system.FormatNumber(number, format);
    }
    LCID UserLocaleId() const override { return Next() ? HasFailed() ? 0 : 0x0407 : m_system.UserLocaleId(); }
    LANGID UserUILanguage() const override { return Next() ? HasFailed() ? 0 : 0x0407 : m_system.UserUILanguage(); }
    bool UseLocale(const std::wstring&) override { return false; }

    int Count() const { return m_count; }
    bool IsReached() const { return m_count > m_point; }

private:
    /// Of no other object's settings, nor the system's.
    static unsigned NewVersion()
    {
        constexpr unsigned kMostAnswers = 1000000;
        static unsigned version = 0;
        return version += kMostAnswers;
    }

    /// Counts an answer; whether it is another than the system's.
    bool Next() const
    {
        const int number = m_count++;
        return m_kind == Wandering::Fails ? number == m_point : number >= m_point;
    }
    bool HasFailed() const { return m_kind == Wandering::Fails || m_kind == Wandering::FailsOnward; }
    bool IsAlways() const { return m_kind == Wandering::MovesAlways; }
    std::wstring Moved(Ports::LocaleSetting setting) const
    {
        using S = Ports::LocaleSetting;
        const bool isEven = IsAlways() && m_count % 2 == 0;
        switch (setting) {
        case S::DecimalSeparator:
            return isEven ? L"\u066B" : L",";
        case S::ThousandsSeparator:
            return isEven ? L"," : L".";
        case S::ListSeparator:
            return L";";
        case S::Grouping:
            return isEven ? L"3;2;0" : L"9;9;9;0";
        case S::CountryCode:
            return isEven ? L"IN" : L"DE";
        case S::NegativeSign:
            return isEven ? L"\u2212" : L"";
        default:
            return isEven ? L"1" : L"x";
        }
    }

    const Ports::Locale& m_system;
    const int m_point;
    const Wandering m_kind;
    const unsigned m_version = NewVersion();
    mutable int m_count = 0;
};

/// Operations that were tried, and those of them that asked.
struct Asking {
    std::size_t tried = 0;
    std::size_t asked = 0;

    void Add(int answers)
    {
        ++tried;
        asked += answers > 0;
    }
    /// Fewer than there were when this was written say that a seam has come loose, and nothing is tried any more.
    void Check(const char* what, std::size_t recorded) const
    {
        const bool isWhole = tried == NamedOperation::All().size();   // and no choice of tests
        EXPECT_TRUE(!isWhole || asked >= recorded) << asked << " ask for " << what;
        Tally::Get().Add(std::string("operations that ask for ") + what, static_cast<long long>(asked));
    }
};

class Surroundings : public testing::TestWithParam<NamedOperation> {
public:
    static void TearDownTestSuite()
    {
        regions.Check("the region", 12);
        clocks.Check("the time", 31);
    }

protected:
    static inline Asking regions;
    static inline Asking clocks;

    /// How often a run asks for the region.
    int CountAnswers() const
    {
        const HeapTrial trial = GetParam().operation.begin();
        const WanderingLocale locale(kNever, Wandering::Fails);
        trial.run();
        trial.check(HeapRun());
        return locale.Count();
    }
    void TryRegion(int point, Wandering kind) const
    {
        const HeapTrial trial = GetParam().operation.begin();
        HeapRun run;
        {
            const WanderingLocale locale(point, kind);
            trial.run();
            const bool isMissing = kind == Wandering::Fails || kind == Wandering::FailsOnward;
            (isMissing ? run.hasFailed : run.hasMoved) = locale.IsReached();
        }
        trial.check(run);
        trial.run();
        trial.check(HeapRun());
        Tally::Get().Add("regions that changed or failed");
    }
};

TEST_P(Surroundings, MayChangeTheirRegionAtAnyTime)
{
    const int count = CountAnswers();
    regions.Add(count);
    const int step = StepBetween(count, kMostPoints);
    for (const auto kind : {Wandering::Fails, Wandering::FailsOnward, Wandering::Moves, Wandering::MovesAlways})
        for (int point = 0; point < count && !HasFailure(); point += step) {
            SCOPED_TRACE(
                testing::Message() << "answer " << point << " of " << count << ", kind " << static_cast<int>(kind));
            TryRegion(point, kind);
        }
}

/// A clock that is wrong, and moves by itself before each answer.
class WrongClock final : public FakeClock {
public:
    WrongClock(std::chrono::nanoseconds since1970, std::chrono::nanoseconds step) : m_next(since1970), m_step(step) { }
    std::chrono::sys_time<std::chrono::nanoseconds> Now() const override
    {
        ++m_count;
        return std::chrono::sys_time<std::chrono::nanoseconds>(m_next += m_step);
    }
    /// Never goes back, but may stand still.
    std::chrono::nanoseconds Elapsed() const override
    {
        ++m_count;
        return m_elapsed += std::max(m_step, std::chrono::nanoseconds());
    }

    int Count() const { return m_count; }

private:
    mutable std::chrono::nanoseconds m_next;
    mutable std::chrono::nanoseconds m_elapsed{};
    const std::chrono::nanoseconds m_step;
    mutable int m_count = 0;
};

TEST_P(Surroundings, MayHaveAnyTime)
{
    using namespace std::chrono_literals;
    constexpr std::chrono::hours kYear = 365 * 24h;
    constexpr struct {
        const char* name;
        std::chrono::nanoseconds since1970;
        std::chrono::nanoseconds step;
    } kClocks[] = {
        {"stands still", 50 * kYear, 0ns},
        {"goes back an hour again and again", 50 * kYear, -1h},
        {"is before 1970", -80 * kYear, 1ns},
        {"goes over the end of 32 bits", (68 * kYear) + (18 * 24h), 1min},
        {"is as late as it can be", 291 * kYear, 1h},
    };
    int answers = 0;
    for (const auto& [name, since1970, step] : kClocks) {
        SCOPED_TRACE(name);
        const HeapTrial trial = GetParam().operation.begin();
        const WrongClock clock(since1970, step);
        for (int run = 0; run < 2; ++run) {
            trial.run();
            trial.check(HeapRun());
        }
        Tally::Get().Add("runs under wrong clocks", clock.Count() > 0 ? 1 : 0);
        answers += clock.Count();
    }
    clocks.Add(answers);
}

INSTANTIATE_TEST_SUITE_P(Operations, Surroundings, testing::ValuesIn(NamedOperation::All()),
    [](const auto& operation) { return operation.param.name; });

}   // namespace
