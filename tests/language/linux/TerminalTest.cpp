// The dialog in a terminal.
#include "LanguageWorld.h"

#include "windows/Terminal.h"

#include <deque>
#include <gmock/gmock.h>

namespace {

class FakeTerminal : public Ports::Terminal {
public:
    FakeTerminal() { SetForTests(this); }
    FakeTerminal(const FakeTerminal&) = delete;
    FakeTerminal& operator=(const FakeTerminal&) = delete;
    ~FakeTerminal() override { SetForTests(nullptr); }

    std::optional<int> ErrorColumns() const override { return 80; }
    bool UnderstandsEscapes() const override { return false; }
    bool IsInteractive() const override { return isInteractive; }
    void Write(const std::wstring& text) override { written += text; }
    std::optional<std::wstring> ReadLine() override
    {
        if (lines.empty())
            return std::nullopt;
        std::wstring line = lines.front();
        lines.pop_front();
        return line;
    }

    bool isInteractive = true;
    std::deque<std::wstring> lines;
    std::wstring written;
};

class TerminalQuestion : public LanguageWorld {
protected:
    TerminalQuestion()
    {
        Ports::Dialogs::SetForTests(nullptr);
        Install("ENU DEU FRA");
        StoreText(L"ENU");
        StoreNumber(L"QueryStartupLang", 1);
    }
    FakeTerminal terminal;
};

TEST_F(TerminalQuestion, IsAnsweredByANumberAndALetter)
{
    terminal.lines = {L"x", L"0", L"9", L"3", L"y"};
    EXPECT_EQ(Chosen(), L"FRA");
    EXPECT_EQ(StoredLanguage(), L"FRA");
    EXPECT_EQ(IGLB_UILanguage::GetInst().ReadQueryStartupLang(), 0);
    EXPECT_THAT(terminal.written,
        testing::StartsWith(L"Select Language\nPlease select the language that you would like to use:\n"
                            L"  1  Name DEU\n  2  Name ENU\n  3  Name FRA\n1-3 [2]: "));
    EXPECT_THAT(terminal.written, testing::EndsWith(L"Always use this language for me [y/N]: "));
}

TEST_F(TerminalQuestion, EmptyLinesTakeWhatIsOffered)
{
    terminal.lines = {L"", L""};
    EXPECT_EQ(Chosen(), L"ENU");
    EXPECT_EQ(IGLB_UILanguage::GetInst().ReadQueryStartupLang(), 1);
}

TEST_F(TerminalQuestion, TakesNoChoiceWithoutATerminalOrAtTheEndOfTheInput)
{
    terminal.lines = {L"3"};
    EXPECT_EQ(Chosen(), L"ENU");
    Forget();
    terminal.isInteractive = false;
    terminal.written.clear();
    EXPECT_EQ(Chosen(), L"ENU");
    EXPECT_EQ(terminal.written, L"");
    EXPECT_EQ(StoredLanguage(), L"ENU");
}

}   // namespace
